#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// Which boards a host sees in a replay, whenever it asks.
class tst_replayboards : public QObject
{
    Q_OBJECT

private slots:
    void whatTheFirstEnumerationShowedIsThereFromTheStart();
    void whatTheFirstShowedIsThereAlsoBeforeANotification();
    void anEmptyFirstEnumerationIsTheFirst();
    void withoutBoardsTheClockStartsAtTheAttach();
    void whatTheRecorderToldBeforeTheFirstEnumerationHolds();
    void whatReportedBeforeTheFirstEnumerationWasThere();
    void whatAnEnumerationShowedHoldsFromTheNotificationBeforeIt();
    void aLaterEnumerationWithoutANotificationHoldsFromItsOwnPlace();
    void anEnumerationThatBeganBeforeTheNotification();
    void reportsOfABoardThatIsGoneStillCome();
    void reportsOfABoardThatWasGoneBeforeTheBeginStillCome();
    void boardsOfASlice();
    void boardsThatAreOnlyToldByTheRecorder();
    void boardsAreInTheOrderThatTheRecorderTold();
    void boardsWithEqualIds();
    void anEnumerationThatFailsHalfway();
    void theNextRoundBeginsWithTheBoardsOfTheStart();
    void theRecordIsHandedOut();
};

namespace {

/// Boards after so many reports.
QList<int> idsAfter(Playing &playing, int reports)
{
    const std::size_t before = playing.recorder.count();
    playing.library.replayStep(reports);
    if (!playing.hears(before + static_cast<std::size_t>(reports)))
        qFatal("the reports do not come");
    for (const int id : playing.library.boardIds())
        playing.listen(id);
    return playing.ids();
}

} // namespace

void tst_replayboards::whatTheFirstEnumerationShowedIsThereFromTheStart()
{
    ReplayCapture capture;
    capture.report(0, 2, "04c800");
    capture.enumeration(10, {1, 2});
    capture.report(20, 1, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), (QList<int>{1, 2}));
    QCOMPARE(playing.recorder.notifications(), std::size_t{0});
}

void tst_replayboards::whatTheFirstShowedIsThereAlsoBeforeANotification()
{
    ReplayCapture capture;
    capture.hotplug(500);
    capture.enumeration(1000, {1, 2});
    capture.seen(1000, 1, 0);
    capture.seen(1000, 2, 1);
    capture.hotplug(1100);
    capture.enumeration(1101, {2});
    capture.report(1200, 2, "04c800");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), (QList<int>{1, 2}));
    QCOMPARE(playing.library.replaySeek(300'000'000), 0);
    QCOMPARE(playing.ids(), (QList<int>{1, 2}));
    QCOMPARE(idsAfter(playing, 1), QList<int>{2});
    QCOMPARE(playing.recorder.notifications(), std::size_t{1});
}

void tst_replayboards::anEmptyFirstEnumerationIsTheFirst()
{
    ReplayCapture capture;
    capture.enumeration(0, {});
    capture.hotplug(500);
    capture.enumeration(1000, {1});
    capture.report(1200, 1, "04c800");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), QList<int>{});
    QCOMPARE(playing.library.replaySeek(300'000'000), 0);
    QCOMPARE(playing.ids(), QList<int>{1});
}

void tst_replayboards::withoutBoardsTheClockStartsAtTheAttach()
{
    ReplayCapture capture;
    capture.call(0, 1, 0, {}, 1);
    capture.enumeration(1, {});
    capture.hotplug(300); // a host needs time to register for it
    capture.enumeration(310, {7});
    capture.report(400, 7, "04c800");
    Playing playing(capture.file());
    QTRY_COMPARE(playing.ids(), QList<int>{7});
    playing.listen(7);
    QVERIFY(ends(playing.library));
    QCOMPARE(playing.recorder.notifications(), std::size_t{1});
    QCOMPARE(replayOf(playing.library).length, 400'000'000LL);
}

void tst_replayboards::whatTheRecorderToldBeforeTheFirstEnumerationHolds()
{
    ReplayCapture capture;
    capture.seen(0, 1, 0); // as at the begin of a slice
    capture.report(1, 1, "04c800");
    capture.hotplug(2);
    capture.enumeration(3, {1, 2});
    capture.report(4, 1, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), QList<int>{1});
    QCOMPARE(idsAfter(playing, 2), (QList<int>{1, 2}));
}

void tst_replayboards::whatReportedBeforeTheFirstEnumerationWasThere()
{
    ReplayCapture capture;
    capture.report(0, 5, "04c800");
    capture.hotplug(1);
    capture.enumeration(2, {6});
    capture.report(3, 6, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), QList<int>{5});
    QCOMPARE(idsAfter(playing, 1), QList<int>{5});
    QCOMPARE(playing.library.replaySeek(3'000'000), 0);
    QCOMPARE(playing.ids(), QList<int>{6});
}

void tst_replayboards::whatAnEnumerationShowedHoldsFromTheNotificationBeforeIt()
{
    ReplayCapture capture;
    capture.enumeration(0, {1});
    capture.report(1, 1, "04c800");
    capture.hotplug(2);
    capture.report(3, 1, "04c801");
    capture.enumeration(4, {1, 2});
    capture.report(5, 1, "04c802");
    Playing playing(paused(capture));
    QList<int> whenNotified;
    playing.recorder.action = [&](int device) {
        if (device == 0)
            whenNotified = playing.ids();
    };
    QCOMPARE(playing.ids(), QList<int>{1});
    QCOMPARE(idsAfter(playing, 1), QList<int>{1});
    QCOMPARE(idsAfter(playing, 1), (QList<int>{1, 2}));
    QCOMPARE(whenNotified, (QList<int>{1, 2}));
    QCOMPARE(playing.recorder.notifications(), std::size_t{1});
}

void tst_replayboards::aLaterEnumerationWithoutANotificationHoldsFromItsOwnPlace()
{
    ReplayCapture capture;
    capture.enumeration(0, {1});
    capture.report(1, 1, "04c800");
    capture.enumeration(2, {1, 2});
    capture.report(3, 1, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), QList<int>{1});
    QCOMPARE(idsAfter(playing, 1), (QList<int>{1, 2}));
}

void tst_replayboards::anEnumerationThatBeganBeforeTheNotification()
{
    using blocks::number;
    ReplayCapture capture;
    capture.call(0, 9, 0, {}, 1);
    capture.hotplug(1);
    capture.call(2, 10, 0, number(0, 4), 1, ReplayCapture::deviceRecord(5));
    capture.report(3, 5, "04c800");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), QList<int>{5});
}

void tst_replayboards::reportsOfABoardThatIsGoneStillCome()
{
    ReplayCapture capture;
    capture.enumeration(0, {1, 2});
    capture.report(1, 1, "04c800");
    capture.hotplug(2);
    capture.report(3, 2, "04c801");
    capture.enumeration(4, {1});
    capture.gone(4, 2);
    capture.report(5, 1, "04c802");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), (QList<int>{1, 2}));
    QCOMPARE(idsAfter(playing, 2), QList<int>{1});
    QCOMPARE(idsAfter(playing, 1), QList<int>{1});
    QCOMPARE(heard(playing.recorder), (QList<QByteArray>{"1:04c800", "2:04c801", "1:04c802"}));
}

void tst_replayboards::reportsOfABoardThatWasGoneBeforeTheBeginStillCome()
{
    ReplayCapture capture;
    capture.enumeration(0, {1, 2});
    capture.report(1, 1, "04c800");
    capture.hotplug(2);
    capture.enumeration(3, {2});
    capture.gone(3, 1);
    capture.report(5, 1, "04c801");
    Playing playing(capture.scenario("\"from\": 0.004"));
    QCOMPARE(playing.ids(), QList<int>{2});
    QTRY_COMPARE(replayOf(playing.library).state, int{ORVEXSIM_REPLAY_WAITING});
    playing.listen(1);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), QList<QByteArray>{"1:04c801"});
}

void tst_replayboards::boardsOfASlice()
{
    ReplayCapture capture;
    capture.report(0, 7, "04c800");
    capture.gone(1, 8);
    capture.report(2, -3, "04c801");
    Playing playing(capture.file());
    QCOMPARE(playing.ids(), (QList<int>{7, -3}));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), (QList<QByteArray>{"7:04c800", "-3:04c801"}));
}

void tst_replayboards::boardsThatAreOnlyToldByTheRecorder()
{
    ReplayCapture capture;
    capture.seen(0, 4, 0);
    capture.report(1, 4, "04c800");
    capture.hotplug(2);
    capture.gone(3, 4);
    capture.seen(3, 5, 0);
    capture.report(4, 5, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), QList<int>{4});
    QCOMPARE(playing.library.replaySeek(3'000'000), 0);
    QCOMPARE(playing.ids(), QList<int>{5});
}

void tst_replayboards::boardsAreInTheOrderThatTheRecorderTold()
{
    ReplayCapture capture; // a slice tells of them in the order of their ids
    capture.seen(0, 1, 3);
    capture.seen(0, 2, 2);
    capture.seen(0, 3, 0);
    capture.seen(0, 4, 1);
    capture.report(1, 1, "04c800");
    capture.hotplug(2);
    capture.gone(3, 3);
    capture.seen(3, 5, 1);
    capture.report(4, 1, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), (QList<int>{3, 4, 2, 1}));
    QCOMPARE(playing.library.replaySeek(3'000'000), 0);
    QCOMPARE(playing.ids(), (QList<int>{4, 5, 2, 1}));
}

void tst_replayboards::boardsWithEqualIds()
{
    ReplayCapture capture;
    capture.enumeration(0, {1, 1});
    capture.report(1, 1, "04c800");
    capture.hotplug(2);
    capture.enumeration(3, {1});
    capture.report(4, 1, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), (QList<int>{1, 1}));
    QCOMPARE(idsAfter(playing, 2), QList<int>{1});
    QCOMPARE(playing.recorder.count(), std::size_t{2}); // each once
}

void tst_replayboards::anEnumerationThatFailsHalfway()
{
    using blocks::number;
    ReplayCapture capture;
    capture.call(0, 9, 0, {}, 3);
    capture.call(0, 10, 0, number(0, 4), 1, ReplayCapture::deviceRecord(5));
    capture.call(0, 10, 0, number(1, 4), 0);
    capture.call(0, 10, 0, number(2, 4), 1, ReplayCapture::deviceRecord(7));
    capture.report(1, 5, "04c800");
    Playing playing(paused(capture));
    QCOMPARE(playing.ids(), (QList<int>{5, 7}));
}

void tst_replayboards::theNextRoundBeginsWithTheBoardsOfTheStart()
{
    ReplayCapture capture;
    capture.enumeration(0, {1});
    capture.report(1, 1, "04c800");
    capture.hotplug(2);
    capture.enumeration(3, {1, 2});
    capture.report(4, 1, "04c801");
    Playing playing(capture.scenario("\"paused\": true, \"loop\": 2"));
    QCOMPARE(idsAfter(playing, 2), (QList<int>{1, 2}));
    QCOMPARE(playing.recorder.notifications(), std::size_t{1});
    QCOMPARE(idsAfter(playing, 1), QList<int>{1}); // the second round has begun
    QCOMPARE(playing.recorder.notifications(), std::size_t{2});
    QCOMPARE(idsAfter(playing, 1), (QList<int>{1, 2}));
    QCOMPARE(playing.recorder.notifications(), std::size_t{3});
}

void tst_replayboards::theRecordIsHandedOut()
{
    ReplayCapture capture;
    capture.enumeration(0, {-1001});
    capture.report(1, -1001, "04c800");
    capture.report(1, 3, "04c800"); // its record is not known
    Playing playing(paused(capture));
    _ORVEX_DEVICE_INFO info{};
    info.recordKind = 6;
    QCOMPARE(playing.library.orvexEnumDeviceInfo(0, &info), std::uint8_t{1});
    QCOMPARE(info.deviceId, -1001);
    QCOMPARE(info.recordKind, 6U);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(info.reserved24), 816), QByteArray(816, 'x'));
    _ORVEX_DEVICE_INFO other{};
    other.recordKind = 6;
    QCOMPARE(playing.library.orvexEnumDeviceInfo(1, &other), std::uint8_t{1});
    QCOMPARE(other.deviceId, 3);
    QCOMPARE(other.reserved24[0], std::uint8_t{0});
    _ORVEX_DEVICE_INFO wrong{};
    wrong.recordKind = 5;
    QCOMPARE(playing.library.orvexEnumDeviceInfo(0, &wrong), std::uint8_t{0});
    QCOMPARE(wrong.deviceId, 0);
    QCOMPARE(playing.library.orvexEnumDeviceInfo(2, &info), std::uint8_t{0});
}

PADSCOPE_TESTS(tst_replayboards);
#include "tst_replayboards.moc"
