#include "rowannouncer.h"

#include <QWidget>

namespace {

constexpr int intervalMs = 1000;

} // namespace

RowAnnouncer::RowAnnouncer(QWidget *labelWithText)
    : QObject(labelWithText)
    , label(labelWithText)
    , isListenedTo(QAccessible::isActive())
{
    QAccessible::installActivationObserver(this);
}

RowAnnouncer::~RowAnnouncer()
{
    QAccessible::removeActivationObserver(this);
}

void RowAnnouncer::textChanged()
{
    // Precise, or the seconds would be up to a twentieth shorter.
    if (isListenedTo && !secondEnd.isActive())
        secondEnd.start(intervalMs, Qt::PreciseTimer, this);
}

void RowAnnouncer::timerEvent(QTimerEvent *)
{
    secondEnd.stop();
    QAccessibleEvent event(label, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void RowAnnouncer::accessibilityActiveChanged(bool active)
{
    isListenedTo = active;
    if (!active)
        secondEnd.stop();
}
