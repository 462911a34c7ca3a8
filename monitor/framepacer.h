#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QVector>

class QWidget;

/// While one of these lives, what changes in some widgets does not ask for their painting. Without events
/// in between.
class Unpainted
{
public:
    explicit Unpainted(const QVector<QWidget *> &widgets);
    ~Unpainted();
    Unpainted(const Unpainted &) = delete;
    Unpainted &operator=(const Unpainted &) = delete;

private:
    QVector<QWidget *> silenced;
};

/// Has widgets painted once a frame and not for each of their changes.
///
/// A change that comes after a frame's time of rest is painted at once. Those that follow sooner are painted
/// together when the frame is over; whoever paints meanwhile gets what is there. GUI thread only.
class FramePacer : public QObject
{
    // Without Q_OBJECT: neither signals nor slots.

public:
    /// \param paced live as long as the pacer
    FramePacer(const QVector<QWidget *> &paced, QObject *parent);

    /// To be called before each change.
    void pace();
    /// The widgets whose changes the end of the frame paints: all of them, or none while changes are painted
    /// at once.
    QVector<QWidget *> held() const { return frameEnd.isActive() ? paced : QVector<QWidget *>(); }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    const QVector<QWidget *> paced;
    QElapsedTimer sinceFrame; ///< invalid before the first one
    QBasicTimer frameEnd;     ///< runs while changes are held back
};
