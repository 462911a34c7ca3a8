#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

#include <atomic>
#include <chrono>

/// Rates, into a callback that only counts. Time is what they are about; a sanitizer takes too much of it.
class tst_pacing : public QObject
{
    Q_OBJECT

private slots:
    void withinOnePercentOverTenSeconds_data();
    void withinOnePercentOverTenSeconds();
};

namespace {

using Clock = std::chrono::steady_clock;

struct Counter
{
    std::atomic<int> reports{0};

    static void data(int, const unsigned char *, unsigned int, void *self)
    {
        ++static_cast<Counter *>(self)->reports;
    }
};

} // namespace

void tst_pacing::withinOnePercentOverTenSeconds_data()
{
    addColumns<int, int>("boards", "rate");
    addRow("one board, 137 a second", 1, 137);
    addRow("one board, 10,000 a second", 1, 10000);
    addRow("four boards, 20,000 a second in all", 4, 5000);
}

void tst_pacing::withinOnePercentOverTenSeconds()
{
    QFETCH(int, boards);
    QFETCH(int, rate);
    std::vector<Counter> counters(static_cast<std::size_t>(boards));
    SimulatedLibrary library;
    for (int i = 1; i < boards; ++i)
        library.plug(1001 + i);
    for (int i = 0; i < boards; ++i)
        QCOMPARE(library.setRate(1001 + i, rate), 0);
    library.orvexAttach();
    for (int i = 0; i < boards; ++i)
        library.orvexSetCallback(1001 + i, Counter::data, &counters[static_cast<std::size_t>(i)]);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));

    const auto start = Clock::now();
    std::vector<int> before;
    for (const Counter &counter : counters)
        before.push_back(counter.reports);
    std::this_thread::sleep_for(std::chrono::seconds(10));
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    for (std::size_t i = 0; i < counters.size(); ++i) {
        const double measured = (counters[i].reports - before[i]) / seconds;
        qInfo("board %zu: %.1f reports a second", i + 1001, measured);
        QVERIFY2(measured > 0.99 * rate && measured < 1.01 * rate, QByteArray::number(measured));
    }
    library.orvexDetach();
}

PADSCOPE_TESTS(tst_pacing);
#include "tst_pacing.moc"
