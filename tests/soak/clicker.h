#pragma once

#include <chrono>
#include <QEvent>
#include <QPoint>
#include <QSemaphore>
#include <QThread>
#include <vector>

class QAbstractButton;
class QWindow;

/// Clicks on a button over and over and measures how long each click is left unanswered.
///
/// The mouse events come from a thread of its own and queue up behind whatever the GUI thread is busy with,
/// as a user's do. A click is answered when the button has taken it and begins to paint its new state. The
/// next one follows a twentieth of a second later. Ends when interruption is requested and the last click is
/// answered, or after a click that is not answered for ten seconds.
class Clicker : public QThread
{
public:
    /// The button must be shown, and stay where it is.
    explicit Clicker(QAbstractButton &button);
    ~Clicker() override;

    /// Milliseconds to the answer, click by click; once finished.
    const std::vector<double> &answersMs() const { return answersMs_; }
    /// Whether the last click was given up; once finished.
    bool gaveUp() const { return gaveUp_; }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void run() override;

private:
    using Clock = std::chrono::steady_clock;

    void post(QEvent::Type type, Qt::MouseButtons held) const;

    QWindow *window_;
    QPoint place_;
    QPoint globalPlace_;
    bool taken_ = false; ///< the click, but not yet painted; of the GUI thread
    Clock::time_point answeredAt_;
    QSemaphore answered_; ///< released once answeredAt_ is set
    std::vector<double> answersMs_;
    bool gaveUp_ = false;
};
