#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QVector>

class QWidget;

/// Some of which the host may have replaced.
using Widgets = QVector<QPointer<QWidget>>;

/// While one of these lives, what changes in some widgets does not ask for their painting.
class Unpainted
{
public:
    explicit Unpainted(const Widgets &widgets);
    ~Unpainted();
    Unpainted(const Unpainted &) = delete;
    Unpainted &operator=(const Unpainted &) = delete;

private:
    Widgets silenced;
};

/// Has widgets painted once a frame and not for each of their changes.
///
/// A change that comes after a frame's time of rest is painted at once. Those that follow sooner are painted
/// together when the frame is over; whoever paints meanwhile gets what is there. GUI thread only.
class FramePacer : public QObject
{
    // Without Q_OBJECT: neither signals nor slots.

public:
    FramePacer(const Widgets &paced, QObject *parent);

    /// To be called before each change.
    void pace();
    /// The widgets whose changes the end of the frame paints: all of them, or none while changes are painted
    /// at once.
    Widgets held() const { return frameEnd.isActive() ? paced : Widgets(); }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    bool isInAChange() const;

    const Widgets paced;
    QElapsedTimer sinceFrame; ///< invalid before the first one
    QBasicTimer frameEnd;     ///< runs while changes are held back
};
