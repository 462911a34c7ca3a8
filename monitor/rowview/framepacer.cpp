#include "framepacer.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTreeView>
#include <utility>

namespace {

constexpr int frameMs = 16; ///< a frame at 60 Hz

/// A widget that was made under a blocked one has inherited that its updates are disabled.
void enableNewChildren(const QWidget *parent)
{
    for (QObject *child : parent->children()) {
        auto *widget = qobject_cast<QWidget *>(child);
        if (widget && !widget->isWindow() && !widget->updatesEnabled() &&
            !widget->testAttribute(Qt::WA_ForceUpdatesDisabled))
            widget->setUpdatesEnabled(true);
    }
}

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

/// Parents first. Looked up each time, since a host may replace header and scroll bars.
FramePacer::Widgets FramePacer::widgets() const
{
    QScrollBar *vertical = view->verticalScrollBar();
    QScrollBar *horizontal = view->horizontalScrollBar();
    return {view,
            view->viewport(),
            view->header()->viewport(),
            vertical->parentWidget(),
            vertical,
            horizontal->parentWidget(),
            horizontal,
            other};
}

void FramePacer::block()
{
    const Widgets paced = widgets();
    for (const QPointer<QWidget> &widget : paced) {
        if (!widget->updatesEnabled())
            continue;
        // Not setUpdatesEnabled(), which repaints everything when it ends.
        widget->setAttribute(Qt::WA_UpdatesDisabled, true);
        blocked.append(widget);
    }
}

/// Does not enable what the host has disabled meanwhile.
void FramePacer::unblock()
{
    const Widgets unblocked = std::exchange(blocked, {});
    for (const QPointer<QWidget> &widget : unblocked) {
        if (!widget || widget->testAttribute(Qt::WA_ForceUpdatesDisabled))
            continue;
        const QWidget *parent = widget->parentWidget();
        if (!parent || parent->updatesEnabled())
            widget->setAttribute(Qt::WA_UpdatesDisabled, false);
    }
    for (const QPointer<QWidget> &widget : unblocked) {
        if (widget && widget->updatesEnabled())
            enableNewChildren(widget);
    }
}

void FramePacer::timerEvent(QTimerEvent *)
{
    frameEnd.stop();
    sinceFrame.start();
    // A slot of the host may run the event loop while a blocker is in scope.
    unblock();
    const Widgets paced = widgets();
    for (const QPointer<QWidget> &widget : paced)
        widget->update();
}

UpdateBlocker::UpdateBlocker(FramePacer &framePacer)
    : pacer(framePacer)
    , isOutermost(framePacer.frameEnd.isActive() && framePacer.blocked.isEmpty())
{
    if (isOutermost)
        pacer.block();
}

UpdateBlocker::~UpdateBlocker()
{
    if (isOutermost)
        pacer.unblock();
}
