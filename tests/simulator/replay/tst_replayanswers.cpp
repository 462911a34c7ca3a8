#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// What calls return in a replay.
class tst_replayanswers : public QObject
{
    Q_OBJECT

private slots:
    void theLastBeforeThePlaceElseTheFirstBehindIt();
    void theTimeBetweenTwoReportsCounts_data();
    void theTimeBetweenTwoReportsCounts();
    void shortenedPausesMoveTheAnswers();
    void byCallAndArguments();
    void textsAndBuffersAreArguments();
    void whatWasFilledInIsFilledIn();
    void aSynchronousReadGivesItsBytes();
    void whatWasNotRecordedIsAnsweredAsEver();
    void attachAndCountAreNotRecordedAnswers();
};

namespace {

using blocks::number;

constexpr int sendCommand = 6, writePacket = 7, getDestination = 14, openChannel = 15, readPacket = 17,
              getPoints = 21, version = 23, connected = 28, isSomething = 45;

void step(Playing &playing, std::size_t heardThen)
{
    playing.library.replayStep(1);
    if (!playing.hears(heardThen))
        qFatal("the report does not come");
}

} // namespace

void tst_replayanswers::theLastBeforeThePlaceElseTheFirstBehindIt()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.call(1, isSomething, 1001, number(1001, 4), 5);
    capture.report(2, 1001, "04c801");
    capture.call(3, isSomething, 1001, number(1001, 4), 6);
    capture.call(3, isSomething, 1001, number(1001, 4), 7);
    capture.report(4, 1001, "04c802");
    Playing playing(paused(capture));
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 5);
    step(playing, 1);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 5);
    step(playing, 2);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 5);
    step(playing, 3);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 7);
    QCOMPARE(playing.library.replaySeek(0), 0);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 5);
}

void tst_replayanswers::theTimeBetweenTwoReportsCounts_data()
{
    addColumns<long long, int>("positionMs", "result");
    addRow("at first", 0LL, 1);
    addRow("before the first", 499LL, 1);
    addRow("at the first", 500LL, 1);
    addRow("before the second", 1499LL, 1);
    addRow("at the second", 1500LL, 2);
    addRow("behind the third", 2600LL, 3);
    addRow("at the end", 3000LL, 3);
}

void tst_replayanswers::theTimeBetweenTwoReportsCounts()
{
    QFETCH(long long, positionMs);
    QFETCH(int, result);
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.call(500, isSomething, 1001, number(1001, 4), 1);
    capture.call(1500, isSomething, 1001, number(1001, 4), 2);
    capture.call(2500, isSomething, 1001, number(1001, 4), 3);
    capture.report(3000, 1001, "04c801");
    Playing playing(paused(capture));
    QCOMPARE(playing.library.replaySeek(positionMs * 1'000'000), 0);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), result);
}

void tst_replayanswers::shortenedPausesMoveTheAnswers()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.call(100, isSomething, 1001, number(1001, 4), 1);
    capture.call(2500, isSomething, 1001, number(1001, 4), 2);
    capture.report(3000, 1001, "04c801");
    capture.call(3200, isSomething, 1001, number(1001, 4), 3);
    capture.report(3300, 1001, "04c802");
    Playing playing(capture.scenario("\"skipGaps\": 0.4, \"paused\": true")); // at 0, 0.4 and 0.7 s
    playing.library.replaySeek(399'000'000);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 1);
    playing.library.replaySeek(500'000'000);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 2);
    playing.library.replaySeek(601'000'000);
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 3);
}

void tst_replayanswers::byCallAndArguments()
{
    ReplayCapture capture;
    capture.call(0, getDestination, 1001, number(1001, 4) + number(1, 4) + number(0, 4), 3);
    capture.call(0, getDestination, 1001, number(1001, 4) + number(1, 4) + number(1, 4), 4);
    capture.call(0, getDestination, -2, number(0xFFFFFFFE, 4) + number(1, 4) + number(1, 4), 9);
    capture.report(1, 1001, "04c800");
    Playing playing(paused(capture));
    QCOMPARE(playing.library.orvexGetPointingDeviceDestination(1001, 1, 0), 3);
    QCOMPARE(playing.library.orvexGetPointingDeviceDestination(1001, 1, 1), 4);
    QCOMPARE(playing.library.orvexGetPointingDeviceDestination(-2, 1, 1), 9);
    QCOMPARE(playing.library.orvexGetPointingDeviceDestination(1001, 0, 0), -1);
}

void tst_replayanswers::textsAndBuffersAreArguments()
{
    ReplayCapture capture;
    capture.call(0, sendCommand, 1001, number(1001, 4) + number(2, 4) + "?\r", 17);
    capture.call(0, writePacket, 1001, number(1001, 4) + number(2, 4) + "ab" + number(2, 4), 18);
    capture.call(0, openChannel, 1001, number(1001, 4) + number(5, 4), 19);
    capture.report(1, 1001, "04c800");
    Playing playing(paused(capture));
    QCOMPARE(playing.library.orvexSendCommand(1001, "?\r"), 17);
    QCOMPARE(playing.library.orvexSendCommand(1001, "?"), 0);
    QCOMPARE(playing.library.orvexSendCommand(1002, "?"), -1);
    QCOMPARE(playing.library.orvexSendCommand(1001, nullptr), -1);
    QCOMPARE(playing.library.orvexWritePacket(1001, "ab", 2), 18);
    QCOMPARE(playing.library.orvexWritePacket(1001, "ac", 2), -1);
    QCOMPARE(playing.library.orvexOpenSynchronousChannel(1001, nullptr, nullptr), 19);
    playing.library.orvexEcho(1001, 0, nullptr); // returns nothing
}

void tst_replayanswers::whatWasFilledInIsFilledIn()
{
    ReplayCapture capture;
    capture.call(0, getPoints, 1001, number(1001, 4), 0, number(3, 4) + number(4, 4), 1);
    capture.call(0, version, 0, {}, 0, number(1, 4) + number(2, 4) + number(300, 4) + number(0, 4), 16);
    capture.call(0, connected, 0, {}, 1, number(0xFFFFFFFF, 4));
    capture.report(1, 1001, "04c800");
    Playing playing(paused(capture));
    int columns = 77;
    int rows = 78;
    playing.library.orvexGetCalibrationPoints(1001, &columns, nullptr);
    QCOMPARE(columns, 3);
    playing.library.orvexGetCalibrationPoints(1001, &columns, &rows);
    QCOMPARE(rows, 4);
    unsigned char major = 0;
    unsigned char minor = 0;
    unsigned int release = 0;
    unsigned int build = 99;
    playing.library.orvexLibraryVersionNumber(&major, &minor, &release, &build);
    QCOMPARE(major, static_cast<unsigned char>(1));
    QCOMPARE(minor, static_cast<unsigned char>(2));
    QCOMPARE(release, 300U);
    QCOMPARE(build, 99U); // had no place when it was recorded
    int port = 0;
    QCOMPARE(playing.library.orvexSerialGetConnected(&port), 1);
    QCOMPARE(port, -1);
}

void tst_replayanswers::aSynchronousReadGivesItsBytes()
{
    ReplayCapture capture;
    capture.call(0, readPacket, 1001, number(1001, 4) + number(1, 4) + number(4, 4) + number(10, 4), 3,
                 number(3, 4) + "abc");
    capture.report(1, 1001, "04c800");
    Playing playing(paused(capture));
    char buffer[4] = {'-', '-', '-', '-'};
    QCOMPARE(playing.library.orvexReadSynchronousPacket(1001, 1, buffer, 4, 10), 3);
    QCOMPARE(QByteArray(buffer, 4), QByteArray("abc-"));
    QCOMPARE(playing.library.orvexReadSynchronousPacket(1001, 1, nullptr, 4, 10), 3);
    QCOMPARE(playing.library.orvexReadSynchronousPacket(1001, 1, buffer, 3, 10), -1);
}

void tst_replayanswers::whatWasNotRecordedIsAnsweredAsEver()
{
    ReplayCapture capture;
    capture.add(0, packetBytes(2, 1, isSomething, 1001, 0, number(1001, 4))); // never returned
    capture.add(0, packetBytes(3, 3, isSomething, 1001, 8, {}, 0xFFFFFFFF));  // its call was lost
    capture.report(1, 1001, "04c800");
    Playing playing(paused(capture));
    QCOMPARE(playing.library.orvexIsSomethingOnBoard(1001), 0);
    QCOMPARE(playing.library.orvexGetTouchEnabled(1001), std::uint8_t{1});
}

void tst_replayanswers::attachAndCountAreNotRecordedAnswers()
{
    ReplayCapture capture;
    capture.call(0, 1, 0, {}, 0); // the attach failed
    capture.call(0, 9, 0, {}, 7);
    capture.report(1, 1001, "04c800");
    SimulatedLibrary library;
    QCOMPARE(library.choose(capture.file().constData()), 0);
    QCOMPARE(library.orvexGetDeviceCount(), 0);
    QCOMPARE(library.orvexAttach(), 1);
    QCOMPARE(library.orvexGetDeviceCount(), 1);
}

PADSCOPE_TESTS(tst_replayanswers);
#include "tst_replayanswers.moc"
