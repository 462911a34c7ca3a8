#include <atomic>
#include <QElapsedTimer>

#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// How well a replay keeps its times, on a machine that does nothing else. Where something else ran meanwhile
/// the next try tells.
class tst_replaytiming : public QObject
{
    Q_OBJECT

private slots:
    void durationWithinOnePercentOr20Ms_data();
    void durationWithinOnePercentOr20Ms();
    void errorAtRate1();
    void noDrift();
    void aDetachEndsItWithin50Ms_data();
    void aDetachEndsItWithin50Ms();
};

namespace {

constexpr int tries = 5;

/// When the first and the last report came.
struct Span
{
    static void take(int, const unsigned char *, unsigned int, void *span)
    {
        auto &self = *static_cast<Span *>(span);
        if (self.count++ == 0)
            self.timer.start();
        self.lastNs = self.timer.nsecsElapsed();
    }

    QElapsedTimer timer;
    std::atomic<int> count{0};
    std::atomic<qint64> lastNs{0};
};

/// Reports 10 ms apart.
void addSeconds(ReplayCapture &capture, int seconds)
{
    for (int i = 0; i <= 100 * seconds; ++i)
        capture.report(10 * i, 1001, "04c80102");
}

} // namespace

void tst_replaytiming::durationWithinOnePercentOr20Ms_data()
{
    addColumns<QByteArray, int, double>("rate", "seconds", "expectedMs");
    addRow("rate 0.5", QByteArray("0.5"), 2, 4000.0);
    addRow("rate 1", QByteArray("1"), 4, 4000.0);
    addRow("rate 10", QByteArray("10"), 40, 4000.0);
}

void tst_replaytiming::durationWithinOnePercentOr20Ms()
{
    QFETCH(QByteArray, rate);
    QFETCH(int, seconds);
    QFETCH(double, expectedMs);
    ReplayCapture capture;
    addSeconds(capture, seconds);
    double ms = 0;
    for (int i = 0; i < tries && std::abs(ms - expectedMs) >= 40; ++i) { // 1 % of 4 s
        Span span;
        SimulatedLibrary library;
        QCOMPARE(library.choose(capture.scenario("\"rate\": " + rate).constData()), 0);
        library.orvexAttach();
        library.orvexSetCallback(1001, Span::take, &span);
        QVERIFY(ends(library));
        QCOMPARE(span.count.load(), 100 * seconds + 1);
        ms = static_cast<double>(span.lastNs) * 1e-6;
    }
    QVERIFY2(std::abs(ms - expectedMs) < 40, QByteArray::number(ms));
}

void tst_replaytiming::errorAtRate1()
{
    ReplayCapture capture;
    addSeconds(capture, 5);
    OrvexsimReplay replay{};
    for (int i = 0; i < tries && (i == 0 || replay.errorP99 >= 2'000'000); ++i) {
        Playing playing(capture.file());
        QVERIFY(ends(playing.library));
        replay = replayOf(playing.library);
    }
    QVERIFY2(replay.errorMedian < 200'000, QByteArray::number(replay.errorMedian));
    QVERIFY2(replay.errorP99 < 2'000'000, QByteArray::number(replay.errorP99));
    QVERIFY(replay.errorMedian > 0 && replay.errorMax >= replay.errorP99);
}

/// PADSCOPE_ROUNDS minutes; none unless it is set. Five and more want a QTEST_FUNCTION_TIMEOUT as well.
void tst_replaytiming::noDrift()
{
    const int minutes = qEnvironmentVariableIntValue("PADSCOPE_ROUNDS");
    if (minutes == 0)
        QSKIP("PADSCOPE_ROUNDS tells for how many minutes");
    ReplayCapture capture;
    addSeconds(capture, 60 * minutes);
    Span span;
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.file().constData()), 0);
    library.orvexAttach();
    library.orvexSetCallback(1001, Span::take, &span);
    QVERIFY(
        QTest::qWaitFor([&] { return replayOf(library).state == ORVEXSIM_REPLAY_ENDED; }, 61'000 * minutes));
    const double ms = static_cast<double>(span.lastNs) * 1e-6;
    qInfo("%.3f ms", ms);
    QVERIFY2(std::abs(ms - 60'000 * minutes) < 20, QByteArray::number(ms));
}

void tst_replaytiming::aDetachEndsItWithin50Ms_data()
{
    addColumns<QByteArray, bool>("members", "isWaiting");
    addRow<QByteArray>("between two reports", "", false);
    addRow<QByteArray>("as fast as possible", "\"rate\": \"max\", \"loop\": \"forever\"", false);
    addRow<QByteArray>("paused", "\"paused\": true", false);
    addRow<QByteArray>("while it waits for a callback", "", true);
}

void tst_replaytiming::aDetachEndsItWithin50Ms()
{
    QFETCH(QByteArray, members);
    QFETCH(bool, isWaiting);
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(isWaiting ? 1 : 60'000, isWaiting ? 1002 : 1001, "04c801");
    qint64 took = 50;
    for (int i = 0; i < tries && took >= 50; ++i) {
        Recorder recorder;
        SimulatedLibrary library;
        QCOMPARE(library.choose(capture.scenario(members).constData()), 0);
        library.orvexAttach();
        library.orvexSetCallback(1001, Recorder::data, &recorder);
        QTest::qWait(20);
        QElapsedTimer timer;
        timer.start();
        library.orvexDetach();
        took = timer.elapsed();
        const std::size_t count = recorder.count();
        QTest::qWait(20);
        QCOMPARE(recorder.count(), count);
    }
    QVERIFY2(took < 50, QByteArray::number(took));
}

PADSCOPE_TESTS(tst_replaytiming);
#include "tst_replaytiming.moc"
