#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QVector>

class QTreeView;
class QWidget;

/// Coalesces the repaints of a view, and of another widget, to one per frame, and one for a layout after it.
///
/// A change at least one frame after the last repaint is painted at once. Those that follow sooner
/// are painted when the frame ends, also inside a nested event loop. render() and grab() show the current
/// state at any time. GUI thread only.
class FramePacer : public QObject
{
    // Without Q_OBJECT: neither signals nor slots.

public:
    explicit FramePacer(QTreeView *view);

    /// \param widget outlives the view
    void addWidget(QWidget *widget) { other = widget; }
    /// To be called before each change.
    void pace();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    friend class UpdateBlocker;
    using Widgets = QVector<QPointer<QWidget>>;
    Widgets widgets() const;
    void block();
    void unblock();

    QTreeView *const view;
    QWidget *other = nullptr;
    QElapsedTimer sinceFrame; ///< invalid before the first one
    QBasicTimer frameEnd;     ///< runs while repaints are deferred
    Widgets blocked;

    friend struct Inspect;
};

/// Suppresses update() of the paced widgets while in scope, or until the frame ends, if repaints are
/// deferred. GUI thread only.
class UpdateBlocker
{
public:
    explicit UpdateBlocker(FramePacer &pacer);
    ~UpdateBlocker();
    UpdateBlocker(const UpdateBlocker &) = delete;
    UpdateBlocker &operator=(const UpdateBlocker &) = delete;

private:
    FramePacer &pacer;
    const bool isOutermost;
};
