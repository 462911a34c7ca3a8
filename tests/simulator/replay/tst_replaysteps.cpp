#include <QElapsedTimer>
#include <QThread>

#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// What a step does, and what it leaves.
class tst_replaysteps : public QObject
{
    Q_OBJECT

private slots:
    void stepsTakeNoTimeOfTheCapture();
    void theReportsAreDeliveredWhenItReturns();
    void aPauseBehindItTakesNothingBack();
    void withinACallbackItReturnsAtOnce();
    void aStepThatMustWaitReturns();
    void behindTheLastReportItRests();
    void behindARoundItRests();
    void behindTheEndItDoesNothing();
    void aSeekLeavesOutOfHowMany();
};

void tst_replaysteps::stepsTakeNoTimeOfTheCapture()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(100'000, 1001, "04c801");
    capture.report(200'000, 1001, "04c802");
    capture.report(200'100, 1001, "04c803");
    capture.report(200'300, 1001, "04c804");
    Playing playing(paused(capture));
    playing.library.replayStep(3);
    QVERIFY(playing.hears(3));
    QCOMPARE(replayOf(playing.library).achievedRate, 0.0);
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    const double achieved = replayOf(playing.library).achievedRate; // of the last 200 ms
    QVERIFY2(achieved > 0.1 && achieved < 2, QByteArray::number(achieved));
}

void tst_replaysteps::theReportsAreDeliveredWhenItReturns()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(paused(capture));
    playing.recorder.action = [](int) { QThread::msleep(20); };
    playing.library.replayStep(3);
    QCOMPARE(heard(playing.recorder), ten.mid(0, 3));
    QCOMPARE(replayOf(playing.library).sent, 3ULL);
}

void tst_replaysteps::aPauseBehindItTakesNothingBack()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(paused(capture));
    for (int i = 0; i < 3; ++i) {
        playing.library.replayStep(3);
        playing.library.replayPause(1);
    }
    QCOMPARE(heard(playing.recorder), ten.mid(0, 9));
}

void tst_replaysteps::withinACallbackItReturnsAtOnce()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(paused(capture));
    std::size_t countWithin = 0;
    playing.recorder.action = [&](int) {
        if (playing.recorder.count() > 1)
            return;
        playing.library.replayStep(2);
        countWithin = playing.recorder.count();
    };
    playing.library.replayStep(1);
    QVERIFY(playing.hears(3));
    QCOMPARE(countWithin, std::size_t{1});
    QCOMPARE(heard(playing.recorder), ten.mid(0, 3));
}

void tst_replaysteps::aStepThatMustWaitReturns()
{
    ReplayCapture capture;
    addTen(capture);
    SimulatedLibrary library;
    QCOMPARE(library.choose(paused(capture).constData()), 0);
    library.orvexAttach();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(library.replayStep(1), 0); // there is no callback
    QVERIFY2(timer.elapsed() < 2000, QByteArray::number(timer.elapsed()));
    QCOMPARE(replayOf(library).sent, 0ULL);
}

void tst_replaysteps::behindTheLastReportItRests()
{
    ReplayCapture capture;
    addTen(capture);
    const StandardError errors;
    Playing playing(paused(capture));
    playing.library.replayStep(10);
    QCOMPARE(heard(playing.recorder), ten);
    QTest::qWait(50);
    QCOMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_PAUSED});
    QCOMPARE(replayOf(playing.library).position, 45'000'000LL);
    QCOMPARE(errors.text(), QByteArray());
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    QTRY_COMPARE(errors.text(), QByteArray("replay: asked rate 1; 10 of 10 reports\n"));
}

void tst_replaysteps::behindARoundItRests()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true, \"loop\": 2"));
    playing.library.replayStep(10);
    QTest::qWait(50);
    QCOMPARE(replayOf(playing.library).round, 1ULL);
    playing.library.replayStep(1);
    QCOMPARE(replayOf(playing.library).round, 2ULL);
    QCOMPARE(replayOf(playing.library).position, 0LL);
    QCOMPARE(heard(playing.recorder), ten + ten.mid(0, 1));
}

void tst_replaysteps::behindTheEndItDoesNothing()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"rate\": \"max\""));
    QVERIFY(ends(playing.library));
    qint64 leastMs = 90;
    for (int i = 0; i < 20 && leastMs >= 90; ++i) { // the machine may be busy
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(playing.library.replayStep(1), 0);
        leastMs = qMin(leastMs, timer.elapsed());
    }
    QVERIFY2(leastMs < 90, "it waited each time");
    playing.library.replayRestart();
    QVERIFY(playing.hears(20)); // it is not paused
}

void tst_replaysteps::aSeekLeavesOutOfHowMany()
{
    ReplayCapture capture;
    addTen(capture);
    const StandardError errors;
    Playing playing(paused(capture));
    playing.library.replayStep(10);
    QCOMPARE(playing.library.replaySeek(0), 0);
    playing.library.replayStep(10);
    playing.library.orvexDetach();
    QCOMPARE(errors.text(), QByteArray("replay: asked rate 1; 20 reports\n"));
}

PADSCOPE_TESTS(tst_replaysteps);
#include "tst_replaysteps.moc"
