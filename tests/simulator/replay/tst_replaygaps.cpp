#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// Long pauses of a capture, and what is played of it.
class tst_replaygaps : public QObject
{
    Q_OBJECT

private slots:
    void theSecondDay();
    void aBeginBehindTheEndIsRefused();
    void longPausesAreShortened();
    void onlyAReportEndsAPause_data();
    void onlyAReportEndsAPause();
    void aPauseMayBeTheLast();
    void shortenedPausesAreTold();
    void shortenedPausesAreOfEachRound();
    void withoutAReportNoPauseIsTold();
    void commandsMoveNeitherZeroNorEnd_data();
    void commandsMoveNeitherZeroNorEnd();
};

namespace {

/// Arguments of a command to a board.
QByteArray command()
{
    return blocks::number(1001, 4) + blocks::number(2, 4) + "?\r";
}

} // namespace

void tst_replaygaps::theSecondDay()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(90'000'000, 1001, "04c801"); // 25 hours
    Playing playing(capture.scenario("\"from\": 86401, \"to\": 90001, \"skipGaps\": 100000"));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), QList<QByteArray>{"1001:04c801"});
}

void tst_replaygaps::aBeginBehindTheEndIsRefused()
{
    ReplayCapture capture;
    addTen(capture);
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.scenario("\"from\": 0.045").constData()), 0); // the last one's time
    QCOMPARE(library.choose(capture.scenario("\"from\": 0.0451").constData()), -1);
    const std::string end =
        ": there is no report from 0.0451 s on; the session ends 0.045 s after its first packet";
    const std::string error = library.error();
    QVERIFY2(error.size() > end.size() && error.substr(error.size() - end.size()) == end, error.c_str());
}

void tst_replaygaps::longPausesAreShortened()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(20'000, 1001, "04c801");
    capture.report(20'010, 1001, "04c802");
    capture.report(90'000, 1001, "04c803");
    Playing playing(capture.scenario("\"skipGaps\": 0.05"));
    QVERIFY(ends(playing.library));
    QCOMPARE(playing.recorder.count(), std::size_t{4});
    QCOMPARE(replayOf(playing.library).length, 110'000'000LL); // 50 + 10 + 50 ms
}

void tst_replaygaps::onlyAReportEndsAPause_data()
{
    addColumns<QByteArray>("members");
    addRow<QByteArray>("without lockstep", "\"skipGaps\": 0.5");
    addRow<QByteArray>("in lockstep", "\"skipGaps\": 0.5, \"lockstep\": true");
}

void tst_replaygaps::onlyAReportEndsAPause()
{
    QFETCH(QByteArray, members);
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.hotplug(300); // is played in its time
    capture.call(1000, 6, 1001, command(), 0);
    capture.hotplug(1500);
    capture.report(2000, 1001, "04c801");
    capture.report(2100, 1001, "04c802");
    Playing playing(capture.scenario(members + ", \"paused\": true"));
    QCOMPARE(replayOf(playing.library).length, 600'000'000LL);
    QCOMPARE(playing.library.replaySeek(200'000'000), 0);
    const std::size_t before = playing.recorder.notifications();
    QCOMPARE(playing.library.replaySeek(300'000'001), 0); // behind the first notification
    playing.library.orvexSendCommand(1001, "?\r");
    playing.library.replayStep(1);
    QCOMPARE(playing.recorder.notifications(), before + 1);
    QCOMPARE(replayOf(playing.library).position, 500'000'000LL);
    QCOMPARE(heard(playing.recorder), QList<QByteArray>{"1001:04c801"});
}

void tst_replaygaps::aPauseMayBeTheLast()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.hotplug(5000);
    const StandardError errors;
    Playing playing(capture.scenario("\"skipGaps\": 0.02"));
    QVERIFY(ends(playing.library));
    QTRY_VERIFY(errors.text().endsWith("\nreplay: 1 pause was shortened, by 4.980 s in all\n"));
}

void tst_replaygaps::shortenedPausesAreTold()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(2'000, 1001, "04c801");
    capture.report(4'010, 1001, "04c802");
    const StandardError errors;
    Playing playing(capture.scenario("\"skipGaps\": 0.01"));
    QVERIFY(ends(playing.library));
    QTRY_VERIFY(errors.text().endsWith("\nreplay: 2 pauses were shortened, by 3.990 s in all\n"));
}

void tst_replaygaps::shortenedPausesAreOfEachRound()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(1000, 1001, "04c801");
    const StandardError errors;
    Playing playing(capture.scenario("\"skipGaps\": 0.01, \"loop\": 2"));
    QVERIFY(ends(playing.library));
    QTRY_VERIFY(
        errors.text().endsWith("\nreplay: 1 pause was shortened, by 0.990 s in all, in each round\n"));
}

void tst_replaygaps::withoutAReportNoPauseIsTold()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(1000, 1001, "04c801");
    const StandardError errors;
    Playing playing(capture.scenario("\"skipGaps\": 0.01, \"paused\": true"));
    playing.library.orvexDetach();
    QCOMPARE(errors.text(), QByteArray("replay: asked rate 1; 0 of 2 reports\n"));
}

void tst_replaygaps::commandsMoveNeitherZeroNorEnd_data()
{
    addColumns<QByteArray, qint64>("members", "length");
    addRow<QByteArray, qint64>("all", "", 500'000'000);
    addRow<QByteArray, qint64>("without the first command", "\"from\": 0.1, ", 500'000'000);
    addRow<QByteArray, qint64>("without the registration", "\"from\": 1.1, ", 300'000'000);
    addRow<QByteArray, qint64>("shortened", "\"skipGaps\": 0.25, ", 450'000'000);
}

/// Those before the registration, before the first report, and behind the last.
void tst_replaygaps::commandsMoveNeitherZeroNorEnd()
{
    QFETCH(QByteArray, members);
    ReplayCapture capture;
    capture.call(0, 6, 1001, command(), 0);
    capture.call(1000, 4, 1001, blocks::number(1001, 4) + blocks::number(1, 4), 0);
    capture.call(1150, 6, 1001, command(), 0);
    capture.report(1200, 1001, "04c800");
    capture.report(1500, 1001, "04c801");
    capture.call(3000, 6, 1001, command(), 0);
    for (const char *lockstep : {"false", "true"}) {
        Playing playing(capture.scenario(members + "\"paused\": true, \"lockstep\": " + lockstep));
        const OrvexsimReplay replay = replayOf(playing.library);
        QTEST(qint64(replay.length), "length");
        QCOMPARE(replay.position, 0LL);
        QCOMPARE(playing.library.choose(
                     capture.scenario(QByteArray("\"from\": 1.6, \"lockstep\": ") + lockstep).constData()),
                 -1);
    }
}

PADSCOPE_TESTS(tst_replaygaps);
#include "tst_replaygaps.moc"
