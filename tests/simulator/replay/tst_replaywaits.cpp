#include <QElapsedTimer>

#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// What a replay waits for, and for how long.
class tst_replaywaits : public QObject
{
    Q_OBJECT

private slots:
    void theClockStartsWhenAllBoardsHaveCallbacks();
    void aReportWaitsForTheCallbackOfItsBoard();
    void boardsWithoutACallbackAreWaitedForFiveSeconds();
    void lockstepWaitsForTheHostsCommands();
    void lockstepGoesOnAfterFiveSeconds();
    void theFiveSecondsCountFromTheFirstCallback();
    void aBoardIsWaitedForOnce();
    void aNotificationWaitsForNothing();
    void boardsThatNobodyListenedToAreNotWaitedFor();
    void aRegistrationIsWaitedForWithoutAnyReport();
};

namespace {

/// Attached, without a callback yet.
struct Attached
{
    explicit Attached(const QByteArray &path)
    {
        if (library.choose(path.constData()) != 0)
            qFatal("%s", library.error().c_str());
        library.orvexAttach();
    }
    void listen(int board) { library.orvexSetCallback(board, Recorder::data, &recorder); }

    Recorder recorder; // it outlives the library
    SimulatedLibrary library;
};

} // namespace

void tst_replaywaits::theClockStartsWhenAllBoardsHaveCallbacks()
{
    ReplayCapture capture;
    addTen(capture);
    Recorder recorder;
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.file().constData()), 0);
    library.orvexAttach();
    QCOMPARE(library.orvexGetDeviceCount(), 2);
    library.orvexSetCallback(1002, Recorder::data, &recorder);
    QTest::qWait(200);
    QCOMPARE(recorder.count(), std::size_t{0});
    QCOMPARE(replayOf(library).state, int{ORVEXSIM_REPLAY_WAITING});
    QCOMPARE(replayOf(library).position, 0LL);
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QVERIFY(ends(library));
    QCOMPARE(heard(recorder), ten);
}

void tst_replaywaits::aReportWaitsForTheCallbackOfItsBoard()
{
    ReplayCapture capture;
    capture.enumeration(0, {1001});
    capture.report(1, 1001, "04c800");
    capture.hotplug(2);
    capture.enumeration(3, {1001, 7});
    capture.report(4, 7, "04c801");
    capture.report(5, 1001, "04c802");
    Playing playing(capture.file());
    QTRY_COMPARE(playing.recorder.notifications(), std::size_t{1});
    QTRY_COMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_WAITING});
    QCOMPARE(playing.recorder.count(), std::size_t{1});
    QCOMPARE(replayOf(playing.library).position, 3'000'000LL);
    playing.listen(7);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), (QList<QByteArray>{"1001:04c800", "7:04c801", "1001:04c802"}));
}

void tst_replaywaits::boardsWithoutACallbackAreWaitedForFiveSeconds()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(1, 1002, "04c801");
    capture.report(2, 1001, "04c802");
    Recorder recorder;
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.file().constData()), 0);
    library.orvexAttach();
    QElapsedTimer timer;
    timer.start();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QVERIFY(ends(library));
    QVERIFY2(timer.elapsed() >= 5000, QByteArray::number(timer.elapsed()));
    QCOMPARE(heard(recorder), (QList<QByteArray>{"1001:04c800", "1001:04c802"}));
    QCOMPARE(replayOf(library).sent, 3ULL);
}

void tst_replaywaits::lockstepWaitsForTheHostsCommands()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.call(1, 6, 1001, blocks::number(1001, 4) + blocks::number(2, 4) + "?\r", 0);
    capture.report(2, 1001, "04c801");
    Playing playing(capture.scenario("\"lockstep\": true"));
    QVERIFY(playing.hears(1));
    playing.library.orvexSendCommand(1001, "!\r"); // another one
    QTest::qWait(100);
    QCOMPARE(playing.recorder.count(), std::size_t{1});
    QCOMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_WAITING});
    QCOMPARE(playing.library.orvexSendCommand(1001, "?\r"), 0);
    QVERIFY(playing.hears(2));
}

void tst_replaywaits::lockstepGoesOnAfterFiveSeconds()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.call(1, 6, 1001, blocks::number(1001, 4) + blocks::number(2, 4) + "?\r", 0);
    capture.report(2, 1001, "04c801");
    QElapsedTimer timer;
    timer.start();
    Playing playing(capture.scenario("\"lockstep\": true"));
    QVERIFY(playing.hears(2));
    QVERIFY2(timer.elapsed() >= 5000, QByteArray::number(timer.elapsed()));
}

/// The time without any callback, which has no limit, does not count.
void tst_replaywaits::theFiveSecondsCountFromTheFirstCallback()
{
    ReplayCapture capture;
    addTen(capture);
    const StandardError errors;
    Attached host(capture.file());
    QTest::qWait(5500);
    host.listen(1001);
    QTest::qWait(200);
    QCOMPARE(errors.text(), QByteArray());
    host.listen(1002);
    QVERIFY(ends(host.library));
    QCOMPARE(heard(host.recorder), ten);
}

/// However often it is plugged in, until the host registers for it.
void tst_replaywaits::aBoardIsWaitedForOnce()
{
    ReplayCapture capture;
    capture.enumeration(0, {1001});
    capture.report(1, 1001, "04c800");
    for (int i = 0; i < 3; ++i) {
        capture.hotplug(10 * i + 2);
        capture.enumeration(10 * i + 3, {1001, 7});
        capture.report(10 * i + 4, 7, "04c801");
        capture.hotplug(10 * i + 5);
        capture.enumeration(10 * i + 6, {1001});
        capture.gone(10 * i + 6, 7);
        capture.report(10 * i + 7, 1001, "04c802");
    }
    const StandardError errors;
    Playing playing(capture.file());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(ends(playing.library));
    QVERIFY2(timer.elapsed() < 9000, QByteArray::number(timer.elapsed()));
    QCOMPARE(playing.recorder.count(), std::size_t{4});
    QCOMPARE(errors.text().count("no callback for board 7 within 5 s"), 1);
    playing.library.replayPause(1);
    QCOMPARE(playing.library.replaySeek(2'000'000), 0);
    playing.listen(7);
    QCOMPARE(playing.library.replaySeek(0), 0);
    playing.library.replayPause(0);
    QTRY_COMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_WAITING});
}

void tst_replaywaits::aNotificationWaitsForNothing()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.hotplug(1);
    capture.report(2, 1001, "04c801");
    const StandardError errors;
    Attached host(capture.file());
    host.listen(1001);
    QVERIFY(ends(host.library));
    QVERIFY2(errors.text().startsWith("replay: asked rate 1, "), errors.text());
    QCOMPARE(heard(host.recorder), (QList<QByteArray>{"1001:04c800", "1001:04c801"}));
}

void tst_replaywaits::boardsThatNobodyListenedToAreNotWaitedFor()
{
    ReplayCapture capture;
    capture.enumeration(0, {1001, 1002});
    capture.report(1, 1001, "04c800");
    const StandardError errors;
    Attached host(capture.file());
    QCOMPARE(host.library.orvexGetDeviceCount(), 2);
    QCOMPARE(replayOf(host.library).state, int{ORVEXSIM_REPLAY_WAITING});
    host.listen(1001);
    QVERIFY(ends(host.library));
    QVERIFY2(errors.text().startsWith("replay: asked rate 1; 1 of 1 report;"), errors.text());
}

void tst_replaywaits::aRegistrationIsWaitedForWithoutAnyReport()
{
    ReplayCapture capture;
    capture.enumeration(0, {1001, 1002});
    capture.call(0, 4, 1002, blocks::number(1002, 4) + blocks::number(1, 4), 0);
    capture.report(0, 1001, "04c800");
    Attached host(capture.file());
    host.listen(1001);
    QTest::qWait(200);
    QCOMPARE(host.recorder.count(), std::size_t{0});
    QCOMPARE(replayOf(host.library).state, int{ORVEXSIM_REPLAY_WAITING});
    host.listen(1002);
    QVERIFY(ends(host.library));
    QCOMPARE(host.recorder.count(), std::size_t{1});
}

PADSCOPE_TESTS(tst_replaywaits);
#include "tst_replaywaits.moc"
