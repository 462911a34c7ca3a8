#include <array>
#include <malloc.h>
#include <memory>
#include <QElapsedTimer>
#include <QStandardItemModel>
#include <QTimer>
#include <vector>

#include "inspect.h"
#include "session.h"

namespace {

constexpr int threadCount = 4;
constexpr int clockStepMs = 10;
constexpr int hexStart = 16 + 3; ///< of the row's text: sixteen characters and three blanks go before

/// A report of a type that the monitor shows raw; it says which thread sent it, and which of that thread's it
/// is.
QByteArray numberedReport(int thread, int number)
{
    QByteArray report(16, '.');
    report[0] = 16;
    report[1] = 33;
    report[2] = static_cast<char>(thread);
    for (int i = 0; i < 4; ++i)
        report[3 + i] = static_cast<char>(number >> (8 * i));
    return report;
}

int byteOfRow(const QString &row, int index)
{
    return row.midRef(hexStart + 3 * index, 2).toInt(nullptr, 16);
}

/// Watches the rows come in.
class Watch
{
public:
    explicit Watch(QStandardItemModel *model)
    {
        QObject::connect(model, &QStandardItemModel::itemChanged, &context,
                         [this](const QStandardItem *item) { take(item->text()); });
    }

    int rows() const { return count; }
    int outOfOrder() const { return disordered; }

private:
    void take(const QString &row)
    {
        int number = 0;
        for (int i = 0; i < 4; ++i)
            number |= byteOfRow(row, 3 + i) << (8 * i);
        int &expected = next[static_cast<std::size_t>(byteOfRow(row, 2) % threadCount)];
        disordered += number != expected;
        expected = number + 1;
        ++count;
    }

    QObject context;
    std::array<int, threadCount> next{};
    int count = 0;
    int disordered = 0;
};

/// How long the event loop was at something else, and how many rows it added in that time.
class Deafness
{
public:
    explicit Deafness(const Watch &watch)
    {
        QObject::connect(&timer, &QTimer::timeout, [this, &watch] {
            const qint64 ms = clock.restart() - clockStepMs;
            if (ms > longestMs) {
                longestMs = ms;
                rowsMeanwhile = watch.rows() - rowsBefore;
            }
            rowsBefore = watch.rows();
        });
        clock.start();
        timer.start(clockStepMs);
    }

    qint64 longestMs = 0;
    int rowsMeanwhile = 0;

private:
    int rowsBefore = 0;
    QElapsedTimer clock;
    QTimer timer;
};

QJsonObject floodOnce(const Session &session, int perThread)
{
    const Watch watch(Inspect::modelOf(session.tool.rows));
    const Deafness deafness(watch);
    const double before = processorTime();
    {
        std::vector<std::unique_ptr<Sender>> senders;
        for (int thread = 0; thread < threadCount; ++thread)
            senders.push_back(std::make_unique<Sender>([&session, thread, perThread] {
                for (int number = 0; number < perThread; ++number)
                    session.send(numberedReport(thread, number), 1 + thread);
            }));
        runUntil([&] { return watch.rows() == threadCount * perThread; });
    }
    settle();
    return {{"rows", watch.rows()},
            {"outOfOrder", watch.outOfOrder()},
            {"deafMs", deafness.longestMs},
            {"rowsMeanwhile", deafness.rowsMeanwhile},
            {"secondsPerRow", (processorTime() - before) / watch.rows()},
            {"heapBytes", static_cast<qint64>(mallinfo2().uordblks)}};
}

} // namespace

QJsonObject flood(int reports)
{
    const Session session;
    const QJsonObject first = floodOnce(session, reports / threadCount);
    return {{"first", first}, {"second", floodOnce(session, reports / threadCount)}};
}
