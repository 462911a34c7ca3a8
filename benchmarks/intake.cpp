#include <benchmark/benchmark.h>
#include <deque>
#include <limits>
#include <QCoreApplication>
#include <QMutex>
#include <QThread>

#include "inspect.h"
#include "tool.h"

// What one report costs the driver library's thread. The callback runs off the GUI thread, so that the signal
// is queued. Clearing the queue and the posted events is not timed.

namespace {

constexpr int intakeBatch = 500;

/// Runs a function on another thread, and waits for it.
template <typename Function>
void onOtherThread(Function function)
{
    QThread *thread = QThread::create(function);
    thread->start();
    thread->wait();
    delete thread;
}

QByteArray reportOfType(int type)
{
    QByteArray report(40, 'x');
    report[0] = 40;
    report[1] = static_cast<char>(type);
    return report;
}

/// Number of clock readings that the design requires: for the rate limit, the packet and the restart.
int clockReadings(int type)
{
    switch (type) {
    case 104:
        return 3;
    case 50:
        return 2;
    default:
        return 1;
    }
}

void setZone(bool set)
{
    if (set)
        qputenv("TZ", "Europe/Paris");
    else
        qunsetenv("TZ");
    tzset();
}

void clear(qorvexgraph *window)
{
    QCoreApplication::removePostedEvents(window);
    qDeleteAll(Inspect::queueOf(window));
    Inspect::queueOf(window).clear();
}

void keptByTool(benchmark::State &state)
{
    setZone(state.range(1) != 0);
    const QByteArray report = reportOfType(static_cast<int>(state.range(0)));
    Tool tool;
    qorvexgraph *window = tool.window;
    QObject::connect(window, SIGNAL(DataReceived()), window, SLOT(OnDataReceived()));
    Inspect::receive(window, Inspect::keepAll);
    std::size_t kept = 0;
    onOtherThread([&] {
        for (auto _ : state) {
            for (int i = 0; i < intakeBatch; ++i)
                qorvexgraph::DataCallback(7, reinterpret_cast<const unsigned char *>(report.constData()),
                                          static_cast<unsigned>(report.size()), window);
            state.PauseTiming();
            kept += Inspect::queueOf(window).size();
            clear(window);
            state.ResumeTiming();
        }
    });
    state.SetItemsProcessed(static_cast<std::int64_t>(kept));
    state.counters["queued"] =
        benchmark::Counter(static_cast<double>(kept), benchmark::Counter::kAvgIterations);
    setZone(false);
}
BENCHMARK(keptByTool)->Name("d/tool")->ArgNames({"type", "TZ"})->ArgsProduct({{33, 50, 104}, {0, 1}});

/// The work that no implementation can avoid.
void keptByFloor(benchmark::State &state)
{
    setZone(state.range(1) != 0);
    const int type = static_cast<int>(state.range(0));
    const QByteArray report = reportOfType(type);
    const int readings = clockReadings(type);
    QObject receiver;
    QMutex mutex;
    std::deque<_DataPacket *> queue;
    std::size_t kept = 0;
    onOtherThread([&] {
        for (auto _ : state) {
            for (int i = 0; i < intakeBatch; ++i) {
                auto *packet = new _DataPacket;
                packet->data = QByteArray(report.constData(), report.size());
                for (int reading = 0; reading < readings; ++reading)
                    packet->time = QTime::currentTime();
                packet->checksum = qChecksum(report.constData(), static_cast<uint>(report.size()));
                mutex.lock();
                queue.push_back(packet);
                mutex.unlock();
                QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
            }
            state.PauseTiming();
            kept += queue.size();
            QCoreApplication::removePostedEvents(&receiver);
            qDeleteAll(queue);
            queue.clear();
            state.ResumeTiming();
        }
    });
    state.SetItemsProcessed(static_cast<std::int64_t>(kept));
    state.counters["queued"] =
        benchmark::Counter(static_cast<double>(kept), benchmark::Counter::kAvgIterations);
    setZone(false);
}
BENCHMARK(keptByFloor)->Name("d/floor")->ArgNames({"type", "TZ"})->ArgsProduct({{33, 50, 104}, {0, 1}});

void droppedByTool(benchmark::State &state)
{
    setZone(state.range(0) != 0);
    const QByteArray report = reportOfType(104);
    Tool tool;
    qorvexgraph *window = tool.window;
    Inspect::receive(window, 24 * 3600 * 1000); // drops every report
    onOtherThread([&] {
        for (auto _ : state)
            qorvexgraph::DataCallback(7, reinterpret_cast<const unsigned char *>(report.constData()),
                                      static_cast<unsigned>(report.size()), window);
    });
    state.counters["kept"] = static_cast<double>(Inspect::queueOf(window).size());
    setZone(false);
}
BENCHMARK(droppedByTool)->Name("e/tool")->ArgName("TZ")->Arg(0)->Arg(1);

void oneClockReading(benchmark::State &state)
{
    setZone(state.range(0) != 0);
    onOtherThread([&] {
        for (auto _ : state)
            benchmark::DoNotOptimize(QTime::currentTime());
    });
    setZone(false);
}
BENCHMARK(oneClockReading)->Name("e/floor")->ArgName("TZ")->Arg(0)->Arg(1);

} // namespace
