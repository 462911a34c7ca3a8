#include "monitor/framepacer.h"

#include <QWidget>

namespace {

constexpr int frameMs = 16; ///< of a screen with 60 pictures a second

} // namespace

Unpainted::Unpainted(const QVector<QWidget *> &widgets)
{
    for (QWidget *widget : widgets) {
        if (widget->updatesEnabled())
            silenced.append(widget);
    }
    // Not setUpdatesEnabled(), which paints all when it ends.
    for (QWidget *widget : qAsConst(silenced))
        widget->setAttribute(Qt::WA_UpdatesDisabled, true);
}

Unpainted::~Unpainted()
{
    for (QWidget *widget : qAsConst(silenced))
        widget->setAttribute(Qt::WA_UpdatesDisabled, false);
}

FramePacer::FramePacer(const QVector<QWidget *> &pacedWidgets, QObject *parent)
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

void FramePacer::timerEvent(QTimerEvent *)
{
    frameEnd.stop();
    sinceFrame.start();
    for (QWidget *widget : paced)
        widget->update();
}
