#include "session.h"

#include <chrono>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <sys/resource.h>
#include <thread>

namespace {

constexpr int settlingMs = 500;

} // namespace

Session::Session(int attaches)
{
    for (int i = 0; i < attaches; ++i)
        tool.window->AttachHardware();
    tool.show(tool.rows);
    runFor(settlingMs);
}

void Session::send(const QByteArray &report, int device) const
{
    qorvexgraph::DataCallback(device, reinterpret_cast<const unsigned char *>(report.constData()),
                              static_cast<unsigned>(report.size()), tool.window);
}

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void atRate(int perSecond, int count, const std::function<void(int)> &function)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i) {
        std::this_thread::sleep_until(start + std::chrono::nanoseconds(1000000000LL * i / perSecond));
        function(i);
    }
}

void runUntil(const std::function<bool()> &condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

double processorTime()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}
