#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <vector>

class QAbstractButton;
class QThread;
class QWindow;

/// Clicks on a button over and over and measures how long each click is left unanswered.
///
/// The mouse events come from a thread of its own and queue up behind whatever the GUI thread is busy with,
/// as a user's do. A click is answered when the button has taken it and begins to paint its new state. The
/// next one follows a twentieth of a second later.
class Clicker : public QObject
{
    Q_OBJECT

public:
    /// The button must be shown, and stay where it is.
    explicit Clicker(QAbstractButton &button);
    ~Clicker() override;

    void start();
    /// The last click is waited for, for ten seconds at most; then stopped() is emitted.
    void stop();

    /// Milliseconds to the answer, click by click; complete once stopped() was emitted.
    std::vector<double> answers() const;
    /// Whether the last click was given up.
    bool gaveUp() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void stopped();

private:
    using Clock = std::chrono::steady_clock;

    void run();
    bool click(std::unique_lock<std::mutex> &lock);
    void postClick() const;

    QWindow *window_;
    QPointF place_;
    QPoint globalPlace_;
    bool taken_ = false; ///< the click, but not yet painted; of the GUI thread

    mutable std::mutex mutex_; ///< of what follows
    std::condition_variable changed_;
    bool stopping_ = false;
    bool answered_ = false;
    Clock::time_point answeredAt_;

    std::vector<double> answersMs_;
    bool gaveUp_ = false;
    std::unique_ptr<QThread> thread_;
};
