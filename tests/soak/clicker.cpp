#include "soak/clicker.h"

#include <QAbstractButton>
#include <QEvent>
#include <QThread>
#include <QtTest/qtestmouse.h>
#include <QWindow>

namespace {

constexpr std::chrono::milliseconds pause{50};
constexpr std::chrono::seconds longestAnswer{10};
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
    stop();
    if (thread_)
        thread_->wait();
}

void Clicker::start()
{
    thread_.reset(QThread::create([this] { run(); }));
    connect(thread_.get(), &QThread::finished, this, &Clicker::stopped);
    thread_->start();
}

void Clicker::stop()
{
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    changed_.notify_all();
}

std::vector<double> Clicker::answers() const
{
    const std::lock_guard lock(mutex_);
    return answersMs_;
}

bool Clicker::gaveUp() const
{
    const std::lock_guard lock(mutex_);
    return gaveUp_;
}

bool Clicker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && taken_) {
        taken_ = false;
        const std::lock_guard lock(mutex_);
        answered_ = true;
        answeredAt_ = Clock::now();
        changed_.notify_all();
    }
    return QObject::eventFilter(watched, event);
}

void Clicker::run()
{
    std::unique_lock lock(mutex_);
    while (!stopping_ && click(lock))
        changed_.wait_for(lock, pause, [this] { return stopping_; });
}

bool Clicker::click(std::unique_lock<std::mutex> &lock)
{
    answered_ = false;
    const Clock::time_point clickedAt = Clock::now();
    lock.unlock();
    postClick();
    lock.lock();
    gaveUp_ = !changed_.wait_for(lock, longestAnswer, [this] { return answered_; });
    if (!gaveUp_)
        answersMs_.push_back(std::chrono::duration<double, std::milli>(answeredAt_ - clickedAt).count());
    return !gaveUp_;
}

void Clicker::postClick() const
{
    qt_handleMouseEvent(window_, place_, globalPlace_, Qt::LeftButton, Qt::LeftButton,
                        QEvent::MouseButtonPress, Qt::NoModifier, 0);
    qt_handleMouseEvent(window_, place_, globalPlace_, Qt::NoButton, Qt::LeftButton,
                        QEvent::MouseButtonRelease, Qt::NoModifier, 0);
}
