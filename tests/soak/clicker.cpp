#include "soak/clicker.h"

#include <QAbstractButton>
#include <QtTest/qtestmouse.h>
#include <QWindow>

namespace {

constexpr unsigned long pauseMs = 50;
constexpr int maxAnswerMs = 10'000;
constexpr std::size_t answersExpected = 100'000;

/// In the middle of a check box's square, which is where a click on it counts.
QPoint placeToClick(const QAbstractButton &button)
{
    return {button.height() / 2, button.height() / 2};
}

} // namespace

Clicker::Clicker(QAbstractButton &button)
    : window_(button.window()->windowHandle())
    , place_(button.mapTo(button.window(), placeToClick(button)))
    , globalPlace_(button.mapToGlobal(placeToClick(button)))
{
    // So that a long run's figures take no memory that a short one's do not.
    answersMs_.reserve(answersExpected);
    connect(&button, &QAbstractButton::toggled, this, [this] { taken_ = true; });
    button.installEventFilter(this);
}

Clicker::~Clicker()
{
    requestInterruption();
    wait();
}

bool Clicker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && taken_) {
        taken_ = false;
        answeredAt_ = Clock::now();
        answered_.release();
    }
    return QThread::eventFilter(watched, event);
}

void Clicker::run()
{
    while (!isInterruptionRequested() && !gaveUp_) {
        const Clock::time_point clickedAt = Clock::now();
        post(QEvent::MouseButtonPress, Qt::LeftButton);
        post(QEvent::MouseButtonRelease, Qt::NoButton);
        gaveUp_ = !answered_.tryAcquire(1, maxAnswerMs);
        if (!gaveUp_)
            answersMs_.push_back(std::chrono::duration<double, std::milli>(answeredAt_ - clickedAt).count());
        msleep(pauseMs);
    }
}

void Clicker::post(QEvent::Type type, Qt::MouseButtons held) const
{
    qt_handleMouseEvent(window_, place_, globalPlace_, held, Qt::LeftButton, type, Qt::NoModifier, 0);
}
