#include "framepacer.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTreeView>

namespace {

constexpr int frameMs = 16; ///< a frame at 60 Hz

} // namespace

FramePacer::FramePacer(QTreeView *treeView)
    : view(treeView)
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

/// Looked up each time, since a host may replace header and scroll bars.
FramePacer::Widgets FramePacer::widgets() const
{
    QScrollBar *vertical = view->verticalScrollBar();
    QScrollBar *horizontal = view->horizontalScrollBar();
    return {view,
            view->viewport(),
            view->header()->viewport(),
            vertical,
            vertical->parentWidget(),
            horizontal,
            horizontal->parentWidget(),
            other};
}

void FramePacer::timerEvent(QTimerEvent *)
{
    // Reentrancy: a slot in a blocker's scope runs the event loop. The next tick tries again.
    if (blockers > 0)
        return;
    frameEnd.stop();
    sinceFrame.start();
    const Widgets paced = widgets();
    for (const QPointer<QWidget> &widget : paced)
        widget->update();
}

UpdateBlocker::UpdateBlocker(FramePacer &framePacer)
    : pacer(framePacer)
{
    ++pacer.blockers;
    if (!pacer.frameEnd.isActive())
        return;
    const FramePacer::Widgets paced = pacer.widgets();
    for (const QPointer<QWidget> &widget : paced) {
        if (!widget->updatesEnabled())
            continue;
        // Not setUpdatesEnabled(), which repaints everything when it ends.
        widget->setAttribute(Qt::WA_UpdatesDisabled, true);
        blocked.append(widget);
    }
}

UpdateBlocker::~UpdateBlocker()
{
    --pacer.blockers;
    for (const QPointer<QWidget> &widget : qAsConst(blocked)) {
        if (widget)
            widget->setAttribute(Qt::WA_UpdatesDisabled, false);
    }
}
