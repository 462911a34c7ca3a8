#include <atomic>
#include <cmath>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QThread>

#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// What a user does to a replay: pause, step, seek, faster, slower, restart.
class tst_replaycontrol : public QObject
{
    Q_OBJECT

private slots:
    void stepsSendTheNextReportsAndRest();
    void stepsBehindTheEndSendNothing();
    void aPauseSendsNothingAndIsNotCaughtUp();
    void aPauseBeforeTheAttachHolds();
    void seekThenPlayGivesTheSuffix();
    void seekBringsTheBoardsOfThePlace();
    void seekBackFromTheEnd();
    void restartBeginsTheFirstRound();
    void theRateChangesAtOnce();
    void whatIsUnderWayIsOverWhenTheRateChanges();
    void whatIsOutOfRangeIsRefused();
    void withinACallback();
    void theEndIsTold();
    void theDetachBeforeTheEndIsTold();
};

void tst_replaycontrol::stepsSendTheNextReportsAndRest()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true"));
    QCOMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_PAUSED});
    QCOMPARE(playing.library.replayStep(1), 0);
    QCOMPARE(playing.library.replayStep(2), 0);
    QVERIFY(playing.hears(3));
    QTest::qWait(100);
    QCOMPARE(heard(playing.recorder), ten.mid(0, 3));
    QCOMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_PAUSED});
    QCOMPARE(replayOf(playing.library).position, 10'000'000LL);
    QCOMPARE(playing.library.replayPause(0), 0);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten);
}

void tst_replaycontrol::stepsBehindTheEndSendNothing()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true"));
    playing.library.replayStep(1000);
    QVERIFY(ends(playing.library));
    playing.library.replayStep(1);
    QTest::qWait(50);
    QCOMPARE(heard(playing.recorder), ten);
}

void tst_replaycontrol::aPauseSendsNothingAndIsNotCaughtUp()
{
    ReplayCapture capture;
    for (int i = 0; i < 50; ++i)
        capture.report(20 * i, 1001, "04c800");
    Playing playing(capture.file());
    QVERIFY(playing.hears(5));
    QCOMPARE(playing.library.replayPause(1), 0);
    const std::size_t count = playing.recorder.count();
    const long long position = replayOf(playing.library).position;
    QTest::qWait(2000);
    QCOMPARE(playing.recorder.count(), count);
    QCOMPARE(replayOf(playing.library).position, position);
    QElapsedTimer timer;
    timer.start();
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    QCOMPARE(playing.recorder.count(), std::size_t{50});
    const qint64 atLeast = (980'000'000 - position) / 1'000'000;
    QVERIFY2(timer.elapsed() >= atLeast, QByteArray::number(timer.elapsed()));
}

void tst_replaycontrol::aPauseBeforeTheAttachHolds()
{
    ReplayCapture capture;
    addTen(capture);
    Recorder recorder;
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.file().constData()), 0);
    QCOMPARE(library.replayPause(1), 0);
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    library.orvexSetCallback(1002, Recorder::data, &recorder);
    QTest::qWait(100);
    QCOMPARE(recorder.count(), std::size_t{0});
    QCOMPARE(replayOf(library).state, int{ORVEXSIM_REPLAY_PAUSED});
}

void tst_replaycontrol::seekThenPlayGivesTheSuffix()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true"));
    QCOMPARE(playing.library.replaySeek(30'000'000), 0); // the seventh's time
    QCOMPARE(replayOf(playing.library).position, 30'000'000LL);
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten.mid(6));
    QCOMPARE(playing.library.replaySeek(40'000'001), 0);
    QVERIFY(playing.hears(5));
    QCOMPARE(heard(playing.recorder), ten.mid(6) + ten.mid(9));
}

void tst_replaycontrol::seekBringsTheBoardsOfThePlace()
{
    ReplayCapture capture;
    capture.enumeration(0, {1, 2});
    capture.report(1, 1, "04c800");
    capture.report(2, 2, "04c801");
    capture.hotplug(10);
    capture.enumeration(11, {2, 3});
    capture.gone(11, 1);
    capture.report(12, 2, "04c802");
    capture.report(20, 3, "04c803");
    Playing playing(capture.scenario("\"paused\": true"));
    QCOMPARE(playing.ids(), (QList<int>{1, 2}));
    QCOMPARE(playing.library.replaySeek(15'000'000), 0);
    QCOMPARE(playing.ids(), (QList<int>{2, 3}));
    QCOMPARE(playing.recorder.notifications(), std::size_t{1});
    QCOMPARE(playing.library.replaySeek(0), 0);
    QCOMPARE(playing.ids(), (QList<int>{1, 2}));
    QCOMPARE(playing.recorder.notifications(), std::size_t{2});
}

void tst_replaycontrol::seekBackFromTheEnd()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.file());
    QVERIFY(ends(playing.library));
    playing.library.replaySeek(0);
    QVERIFY(playing.hears(20));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten + ten);
    QCOMPARE(replayOf(playing.library).position, 45'000'000LL);
}

void tst_replaycontrol::restartBeginsTheFirstRound()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"loop\": 2"));
    QVERIFY(ends(playing.library));
    QCOMPARE(playing.library.replayRestart(), 0);
    QCOMPARE(replayOf(playing.library).round, 1ULL);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten + ten + ten + ten);
    QCOMPARE(replayOf(playing.library).sent, 20ULL);
}

void tst_replaycontrol::theRateChangesAtOnce()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(100'000, 1001, "04c801");
    capture.report(200'000, 1001, "04c802");
    Playing playing(capture.file());
    QVERIFY(playing.hears(1));
    QCOMPARE(playing.library.replayRate(0), 0);
    QVERIFY(ends(playing.library));
    QCOMPARE(playing.recorder.count(), std::size_t{3});
    QCOMPARE(replayOf(playing.library).rate, 0.0);
}

void tst_replaycontrol::whatIsUnderWayIsOverWhenTheRateChanges()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(100'000, 1001, "04c801");
    Playing playing(capture.scenario("\"paused\": true"));
    std::atomic<int> begun{0};
    std::atomic<int> returned{0};
    playing.recorder.action = [&](int) {
        ++begun;
        QThread::msleep(50);
        ++returned;
    };
    playing.library.replayPause(0);
    QTRY_COMPARE(begun.load(), 1);
    QCOMPARE(playing.library.replayRate(2), 0);
    QCOMPARE(returned.load(), 1);
}

void tst_replaycontrol::whatIsOutOfRangeIsRefused()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true"));
    QCOMPARE(playing.library.replayRate(0.09), -1);
    QCOMPARE(playing.library.replayRate(100.1), -1);
    QCOMPARE(playing.library.replayRate(-1), -1);
    QCOMPARE(playing.library.replayRate(std::nan("")), -1);
    QCOMPARE(playing.library.replayRate(0.1), 0);
    QCOMPARE(playing.library.replayRate(100), 0);
    QCOMPARE(playing.library.replaySeek(-1), -1);
    QCOMPARE(playing.library.replaySeek(45'000'001), -1);
    QCOMPARE(playing.library.replaySeek(45'000'000), 0);
    QCOMPARE(playing.library.replayStep(0), -1);
    QCOMPARE(playing.library.replayStep(-1), -1);
    QCOMPARE(playing.library.replayPause(2), -1);
}

void tst_replaycontrol::withinACallback()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true"));
    playing.recorder.action = [&](int) {
        if (playing.recorder.count() == 3)
            playing.library.replayPause(1);
        if (playing.recorder.count() == 4)
            playing.library.replaySeek(45'000'000);
    };
    playing.library.replayPause(0);
    QVERIFY(playing.hears(3));
    QTest::qWait(50);
    QCOMPARE(playing.recorder.count(), std::size_t{3});
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten.mid(0, 4) + ten.mid(9));
}

void tst_replaycontrol::theEndIsTold()
{
    ReplayCapture capture;
    addTen(capture);
    const StandardError errors;
    Playing playing(capture.scenario("\"rate\": 2, \"loop\": 2"));
    QVERIFY(ends(playing.library));
    QTRY_VERIFY(errors.text().endsWith("ms\n"));
    playing.library.orvexDetach();
    const QByteArray text = errors.text();
    QVERIFY2(
        QRegularExpression("^replay: asked rate 2, achieved \\d\\.\\d{3}; 20 of 20 reports; error median "
                           "\\d+\\.\\d{3} ms, 99 % \\d+\\.\\d{3} ms, greatest \\d+\\.\\d{3} ms\n$")
            .match(text)
            .hasMatch(),
        text);
}

void tst_replaycontrol::theDetachBeforeTheEndIsTold()
{
    ReplayCapture capture;
    addTen(capture);
    const StandardError errors;
    Playing playing(capture.scenario("\"paused\": true, \"rate\": \"max\""));
    playing.library.replayStep(1);
    QVERIFY(playing.hears(1));
    playing.library.orvexDetach();
    QCOMPARE(errors.text(), QByteArray("replay: asked rate max; 1 of 10 reports\n"));
    playing.library.orvexDetach();
    QCOMPARE(errors.text().count('\n'), 1);
}

PADSCOPE_TESTS(tst_replaycontrol);
#include "tst_replaycontrol.moc"
