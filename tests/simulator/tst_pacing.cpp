#include <map>
#include <QElapsedTimer>

#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

/// Rates, into a callback that only counts. Time is what they are about; a sanitizer takes too much of it.
class tst_pacing : public QObject
{
    Q_OBJECT

private slots:
    void withinOnePercentOverTenSeconds_data();
    void withinOnePercentOverTenSeconds();
};

namespace {

void ignoreReport(int, const unsigned char *, unsigned int, void *) {}

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
    SimulatedLibrary library;
    const auto delivered = [&library](int id) {
        unsigned long long count = 0;
        library.counts(id, nullptr, &count);
        return static_cast<double>(count);
    };
    for (int i = 1; i < boards; ++i)
        library.plug(1001 + i);
    library.orvexAttach();
    for (const int id : library.boardIds()) {
        QCOMPARE(library.setRate(id, rate), 0);
        library.orvexSetCallback(id, ignoreReport, nullptr);
    }
    QTest::qSleep(200);
    std::map<int, double> before;
    for (const int id : library.boardIds())
        before[id] = delivered(id);
    QElapsedTimer timer;
    timer.start();
    QTest::qSleep(10000);
    const double seconds = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    for (const auto &[id, count] : before) {
        const double measured = (delivered(id) - count) / seconds;
        qInfo("board %d: %.1f reports a second", id, measured);
        QVERIFY2(measured > 0.99 * rate && measured < 1.01 * rate, QByteArray::number(measured));
    }
    library.orvexDetach();
}

PADSCOPE_TESTS(tst_pacing);
#include "tst_pacing.moc"
