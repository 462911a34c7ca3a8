#include "monitor/framepacer.h"

#include <QWidget>

namespace {

constexpr int frameMs = 16; ///< of a screen with 60 pictures a second

} // namespace

Unpainted::Unpainted(const Widgets &widgets)
{
    for (const QPointer<QWidget> &widget : widgets) {
        if (widget && widget->updatesEnabled())
            silenced.append(widget);
    }
    // Not setUpdatesEnabled(), which paints all when it ends.
    for (const QPointer<QWidget> &widget : qAsConst(silenced))
        widget->setAttribute(Qt::WA_UpdatesDisabled, true);
}

Unpainted::~Unpainted()
{
    for (const QPointer<QWidget> &widget : qAsConst(silenced)) {
        if (widget)
            widget->setAttribute(Qt::WA_UpdatesDisabled, false);
    }
}

FramePacer::FramePacer(const Widgets &pacedWidgets, QObject *parent)
    : QObject(parent)
    , paced(pacedWidgets)
{
}

void FramePacer::pace()
{
    if (frameEnd.isActive())
        return;
    const qint64 ms = sinceFrame.isValid() ? sinceFrame.elapsed() : frameMs;
    if (ms >= frameMs)
        sinceFrame.start();
    else
        frameEnd.start(frameMs - static_cast<int>(ms), Qt::PreciseTimer, this);
}

/// Whether the event loop runs within a change, as where a host opens a dialog for a row.
bool FramePacer::isInAChange() const
{
    const QWidget *first = paced.first();
    return first && first->testAttribute(Qt::WA_UpdatesDisabled) &&
           !first->testAttribute(Qt::WA_ForceUpdatesDisabled) && first->parentWidget()->updatesEnabled();
}

void FramePacer::timerEvent(QTimerEvent *)
{
    if (isInAChange()) {
        frameEnd.start(frameMs, Qt::PreciseTimer, this);
        return;
    }
    frameEnd.stop();
    sinceFrame.start();
    for (const QPointer<QWidget> &widget : paced) {
        if (widget)
            widget->update();
    }
}
