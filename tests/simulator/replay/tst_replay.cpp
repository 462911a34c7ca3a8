#include <QElapsedTimer>
#include <QThread>

#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// Captures that are played: what comes, in which order, and when it is waited for the host.
class tst_replay : public QObject
{
    Q_OBJECT

private slots:
    void theOrderIsTheCapturesAcrossAllBoards_data();
    void theOrderIsTheCapturesAcrossAllBoards();
    void notificationsKeepTheirPlace();
    void roundsAreRepeated();
    void shortRoundsFollowAtOnceUnlessTheyHaveNoEnd();
    void theFirstReportKeepsItsDistanceFromTheRegistration();
    void fromAndTo();
    void everyCallbackOfTheBoardIsCalled();
    void ofSeveralListenersTheLowestNumberIsPlayed();
    void listenersWithoutANumberGetNoOtherReport();
    void whatIsLateByMoreThanAQuarterOfASecondStretchesTime();
    void aDetachEndsIt();
    void theNextAttachBeginsAnew();
    void anotherScenarioTakesItsPlace();
    void boardsAreThoseOfNoThread();
    void faultsAndRatesHaveNoPlaceInAReplay();
};

namespace {

constexpr double ms = 1;

} // namespace

void tst_replay::theOrderIsTheCapturesAcrossAllBoards_data()
{
    addColumns<QByteArray>("members");
    addRow<QByteArray>("rate 1", "");
    addRow<QByteArray>("rate 0.5", "\"rate\": 0.5");
    addRow<QByteArray>("rate 100", "\"rate\": 100");
    addRow<QByteArray>("as fast as possible", "\"rate\": \"max\"");
}

void tst_replay::theOrderIsTheCapturesAcrossAllBoards()
{
    QFETCH(QByteArray, members);
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario(members));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten);
    QCOMPARE(replayOf(playing.library).sent, 10ULL);
    QCOMPARE(replayOf(playing.library).length, 45'000'000LL);
}

void tst_replay::notificationsKeepTheirPlace()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.hotplug(1 * ms);
    capture.report(2 * ms, 1001, "04c801");
    Playing playing(capture.scenario("\"paused\": true"));
    std::vector<int> devices;
    playing.recorder.action = [&devices](int device) { devices.push_back(device); };
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    QCOMPARE(devices, (std::vector<int>{1001, 0, 1001}));
}

void tst_replay::roundsAreRepeated()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"loop\": 3, \"rate\": 10"));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten + ten + ten);
    QCOMPARE(replayOf(playing.library).round, 3ULL);
    QCOMPARE(replayOf(playing.library).rounds, 3ULL);
    QCOMPARE(replayOf(playing.library).reports, 10ULL);
}

void tst_replay::shortRoundsFollowAtOnceUnlessTheyHaveNoEnd()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    QElapsedTimer timer;
    timer.start();
    Playing playing(capture.scenario("\"loop\": 2000"));
    QVERIFY(ends(playing.library));
    QVERIFY2(timer.elapsed() < 19'000, QByteArray::number(timer.elapsed()));
    QCOMPARE(playing.recorder.count(), std::size_t{2000});
    playing.library.choose(capture.scenario("\"loop\": \"forever\"").constData());
    timer.restart();
    playing.listen(1001);
    QVERIFY(playing.hears(2010));
    QVERIFY2(timer.elapsed() >= 90, QByteArray::number(timer.elapsed()));
}

void tst_replay::theFirstReportKeepsItsDistanceFromTheRegistration()
{
    const QByteArray arguments = blocks::number(1001, 4) + blocks::number(1, 4);
    ReplayCapture capture;
    capture.call(1000 * ms, 4, 1001, arguments, 0);
    capture.call(2000 * ms, 4, 1001, arguments, 0);
    capture.report(2300 * ms, 1001, "04c800");
    capture.call(2301 * ms, 4, 1001, arguments, 0);
    capture.report(2310 * ms, 1001, "04c801");
    QElapsedTimer timer;
    timer.start();
    Playing playing(capture.file());
    QVERIFY(playing.hears(1));
    QVERIFY2(timer.elapsed() >= 300, QByteArray::number(timer.elapsed()));
    QCOMPARE(replayOf(playing.library).length, 310'000'000LL);
    playing.library.choose(capture.scenario("\"from\": 1.1").constData());
    QCOMPARE(replayOf(playing.library).length, 10'000'000LL);
    playing.library.choose(capture.scenario("\"skipGaps\": 0.02").constData());
    QCOMPARE(replayOf(playing.library).length, 30'000'000LL);
}

void tst_replay::fromAndTo()
{
    ReplayCapture capture;
    addTen(capture);
    // 10 ms belongs to it, 25 ms does not.
    Playing playing(capture.scenario("\"from\": 0.010, \"to\": 0.025"));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten.mid(2, 3));
    QCOMPARE(replayOf(playing.library).length, 10'000'000LL);
}

void tst_replay::everyCallbackOfTheBoardIsCalled()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(1 * ms, 1001, "04c801");
    Recorder recorder;
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.scenario("\"paused\": true").constData()), 0);
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    library.orvexSetCallback(1001, Recorder::twin, &recorder);
    library.replayPause(0);
    QVERIFY(ends(library));
    QCOMPARE(heard(recorder),
             (QList<QByteArray>{"1001:04c800", "1001:04c800", "1001:04c801", "1001:04c801"}));
    QCOMPARE(replayOf(library).sent, 2ULL);
}

void tst_replay::ofSeveralListenersTheLowestNumberIsPlayed()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800", 2);
    capture.report(1 * ms, 1001, "04c800", 1); // the same, and the lower number
    capture.report(2 * ms, 1001, "04c800", 1); // the next one
    capture.report(3 * ms, 1002, "04c800", 4); // another board
    capture.report(4 * ms, 1001, "04c800", 2); // still the second report
    capture.report(5 * ms, 1001, "04c801", 2); // the first listener's was lost
    capture.call(6 * ms, 4, 1001, blocks::number(1001, 4) + blocks::number(3, 4), 0);
    capture.report(7 * ms, 1001, "04c801", 3); // a new listener does not get what came before it
    Playing playing(capture.file());
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder),
             (QList<QByteArray>{"1001:04c800", "1001:04c800", "1002:04c800", "1001:04c801", "1001:04c801"}));
    QCOMPARE(replayOf(playing.library).length, 6'000'000LL); // from the first that is played
}

void tst_replay::listenersWithoutANumberGetNoOtherReport()
{
    constexpr quint32 none = 0xFFFFFFFF;
    ReplayCapture capture;
    capture.report(0, 1001, "04c800", 1);
    capture.report(1 * ms, 1001, "04c800", none);
    capture.report(2 * ms, 1001, "04c800", none);
    capture.report(3 * ms, 1001, "04c801", none); // here nobody has a number, so these may be two
    capture.report(4 * ms, 1001, "04c801", none);
    capture.report(5 * ms, 1001, "04c800", none);
    capture.report(6 * ms, 1001, "04c800", 1);
    Playing playing(capture.file());
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder),
             (QList<QByteArray>{"1001:04c800", "1001:04c801", "1001:04c801", "1001:04c800"}));
}

void tst_replay::whatIsLateByMoreThanAQuarterOfASecondStretchesTime()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(10 * ms, 1001, "04c801");
    capture.report(310 * ms, 1001, "04c802");
    Recorder recorder;
    QElapsedTimer timer;
    std::vector<qint64> times;
    recorder.action = [&](int) {
        times.push_back(timer.elapsed());
        if (times.size() == 1)
            QThread::msleep(400);
    };
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.file().constData()), 0);
    library.orvexAttach();
    timer.start();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QVERIFY(ends(library));
    QCOMPARE(times.size(), std::size_t{3});
    QVERIFY2(times[2] - times[1] >= 299, QByteArray::number(times[2] - times[1]));
    QVERIFY(replayOf(library).errorMax >= 380'000'000);
}

void tst_replay::aDetachEndsIt()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"loop\": \"forever\", \"rate\": \"max\""));
    QVERIFY(playing.hears(100));
    playing.library.orvexDetach();
    const std::size_t count = playing.recorder.count();
    QTest::qWait(20);
    QCOMPARE(playing.recorder.count(), count);
}

void tst_replay::theNextAttachBeginsAnew()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.file());
    QVERIFY(ends(playing.library));
    playing.library.orvexDetach();
    QCOMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_WAITING});
    QCOMPARE(replayOf(playing.library).sent, 0ULL);
    playing.library.orvexAttach();
    playing.listen(1001);
    playing.listen(1002);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten + ten);
}

void tst_replay::anotherScenarioTakesItsPlace()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"loop\": \"forever\""));
    QVERIFY(playing.hears(20));
    QCOMPARE(playing.library.replayIsOn(), 1);
    QCOMPARE(playing.library.choose("default"), 0);
    QCOMPARE(playing.library.replayIsOn(), 0);
    QCOMPARE(replayOf(playing.library).state, -1);
    QCOMPARE(playing.library.replayPause(1), -1);
    QCOMPARE(playing.ids(), QList<int>{1001});
    const std::size_t count = playing.recorder.count();
    playing.listen(1001);
    QVERIFY(playing.hears(count + 10)); // of the simulated board
    QCOMPARE(playing.library.choose(capture.file().constData()), 0);
    QCOMPARE(playing.ids(), (QList<int>{1002, 1001}));
}

void tst_replay::boardsAreThoseOfNoThread()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true"));
    const unsigned char bytes[] = {4, 200, 9};
    QCOMPARE(playing.library.send(1001, bytes, 3), 1);
    QCOMPARE(playing.library.sendOn(ORVEXSIM_BOARDS_THREAD, 1001, bytes, 3), 1);
    QCOMPARE(playing.library.plug(5), 0);
    QTRY_COMPARE(playing.recorder.notifications(), std::size_t{1});
    QCOMPARE(playing.ids(), (QList<int>{1002, 1001, 5}));
    QCOMPARE(playing.library.unplug(5), 0);
    QCOMPARE(heard(playing.recorder), (QList<QByteArray>{"1001:04c809", "1001:04c809"}));
}

void tst_replay::faultsAndRatesHaveNoPlaceInAReplay()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"paused\": true"));
    QCOMPARE(playing.library.setRate(1001, 50), -1);
    QCOMPARE(playing.library.trigger("flood"), -1);
    QCOMPARE(
        playing.library.error(),
        std::string("flood: nothing goes wrong in a replay but what was recorded; choose another scenario"));
}

PADSCOPE_TESTS(tst_replay);
#include "tst_replay.moc"
