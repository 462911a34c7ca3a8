#include "simulator/simulatedlibrary.h"

#include <atomic>
#include <QtTest>

/// What a setter is given is what its getter returns, board by board.
class tst_entrypoints : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void touch();
    void touchDestinations();
    void pointingDestinations();
    void lateDetection();
    void unknownBoards();
    void calibration();
    void serial();
    void version();
    void lockExcludesOthers();
    void loopedBackBytes();
    void refusedLoopBacks();
    void commandsAreAnswered();
    void voltagesAndStatusTextsOnRequest();
    void closingCommands();
    void settersWithoutGetters();

private:
    std::unique_ptr<Recorder> recorder; // outlives the library, which calls it
    std::unique_ptr<SimulatedLibrary> library;
};

void tst_entrypoints::init()
{
    recorder = std::make_unique<Recorder>();
    library = std::make_unique<SimulatedLibrary>();
    library->plug(2);
    library->orvexAttach();
}

void tst_entrypoints::cleanup()
{
    library.reset();
    recorder.reset();
}

void tst_entrypoints::touch()
{
    QCOMPARE(library->orvexGetTouchEnabled(1001), std::uint8_t{1});
    QCOMPARE(library->orvexGetTouchSystemRedirectionEnabled(1001), std::uint8_t{1});
    library->orvexSetTouchEnabled(1001, 0);
    QCOMPARE(library->orvexGetTouchEnabled(1001), std::uint8_t{0});
    QCOMPARE(library->orvexGetTouchEnabled(2), std::uint8_t{1});
    library->orvexSetTouchSystemRedirectionEnabled(2, 0);
    QCOMPARE(library->orvexGetTouchSystemRedirectionEnabled(1001), std::uint8_t{1});
    QCOMPARE(library->orvexGetTouchSystemRedirectionEnabled(2), std::uint8_t{0});
}

void tst_entrypoints::touchDestinations()
{
    library->orvexSetTouchDestination(1001, 3);
    QCOMPARE(library->orvexGetTouchDestination(1001), 3);
    library->orvexSetTouchDestinationEx(1001, 255, 1);
    QCOMPARE(library->orvexGetTouchDestination(1001), 255);
    QCOMPARE(library->orvexGetTouchDestination(2), 0);
}

void tst_entrypoints::pointingDestinations()
{
    library->orvexSetPointingDeviceDestination(1001, 1, 0, 5);
    library->orvexSetPointingDeviceDestinationEx(1001, 1, 1, 6, 1);
    QCOMPARE(library->orvexGetPointingDeviceDestination(1001, 1, 0), 5);
    QCOMPARE(library->orvexGetPointingDeviceDestination(1001, 1, 1), 6);
    QCOMPARE(library->orvexGetPointingDeviceDestination(1001, 2, 0), 0);
    QCOMPARE(library->orvexGetPointingDeviceDestination(2, 1, 0), 0);
}

void tst_entrypoints::lateDetection()
{
    library->orvexSetLATEDetection(2, 9);
    QCOMPARE(library->orvexGetLATEDetection(2), 9);
    QCOMPARE(library->orvexGetLATEDetection(1001), 0);
}

void tst_entrypoints::unknownBoards()
{
    library->orvexSetTouchEnabled(5, 1);
    QCOMPARE(library->orvexGetTouchEnabled(5), std::uint8_t{0});
    QCOMPARE(library->orvexGetTouchDestination(5), -1);
    QCOMPARE(library->orvexGetPointingDeviceDestination(5, 0, 0), -1);
    QCOMPARE(library->orvexGetLATEDetection(5), -1);
    QCOMPARE(library->orvexIsSomethingOnBoard(5), 0);
    QCOMPARE(library->orvexSendCommand(5, "?"), -1);
    QCOMPARE(library->orvexWritePacket(5, "ab", 2), -1);
    QCOMPARE(library->orvexSetCalibrationMode(5, 1), -1);
}

void tst_entrypoints::calibration()
{
    int columns = -1;
    int rows = -1;
    QCOMPARE(library->orvexSetCalibrationMode(1001, 1), 0);
    library->orvexGetCalibrationPoints(5, &columns, &rows);
    QCOMPARE(columns, -1);
    library->orvexGetCalibrationPoints(1001, &columns, &rows);
    QCOMPARE(columns, 4);
    QCOMPARE(rows, 3);
    library->orvexGetCalibrationPoints(1001, nullptr, nullptr);
}

void tst_entrypoints::serial()
{
    int port = -7;
    QCOMPARE(library->orvexSerialGetConnected(&port), 0);
    QCOMPARE(port, -7);
    QCOMPARE(library->orvexSerialConnect(3), 1);
    QCOMPARE(library->orvexSerialGetConnected(&port), 1);
    QCOMPARE(port, 3);
    QCOMPARE(library->orvexSerialDisconnect(), 1);
    QCOMPARE(library->orvexSerialDisconnect(), 0);
    QCOMPARE(library->orvexSerialGetConnected(nullptr), 0);
    QCOMPARE(library->orvexSerialConnect(-1), 0);
    library->orvexSerialSetStartupMode(4);
    QCOMPARE(library->orvexSerialGetStartupMode(), 4);
}

void tst_entrypoints::version()
{
    unsigned char major = 99;
    unsigned char minor = 99;
    unsigned int release = 99;
    unsigned int build = 99;
    library->orvexLibraryVersionNumber(&major, &minor, &release, &build);
    QCOMPARE(static_cast<int>(major), 1);
    QCOMPARE(static_cast<int>(minor), 0);
    QCOMPARE(release, 0U);
    QCOMPARE(build, 0U);
    QCOMPARE(library->orvexInterface(), 1);
}

void tst_entrypoints::lockExcludesOthers()
{
    library->orvexUnlock(); // held by nobody: nothing happens
    library->orvexLock();
    library->orvexLock();
    std::atomic<bool> taken{false};
    std::thread other([&] {
        library->orvexUnlock(); // not the holder
        library->orvexLock();
        taken = true;
        library->orvexUnlock();
    });
    QTest::qWait(50); // long enough for a lock that does not exclude to be seen
    QVERIFY(!taken);
    library->orvexUnlock();
    QTest::qWait(50);
    QVERIFY(!taken);
    library->orvexUnlock();
    other.join();
    QVERIFY(taken);
}

void tst_entrypoints::loopedBackBytes()
{
    const unsigned char bytes[] = {3, 222, 9};
    library->orvexSetCallback(1001, Recorder::data, recorder.get());
    QCOMPARE(library->orvexWritePacket(1001, bytes, 3), 3);
    QTRY_COMPARE(recorder->timesSeen(Bytes{3, 222, 9}), 1);
    library->orvexEcho(1001, 3, bytes);
    QTRY_COMPARE(recorder->timesSeen(Bytes{3, 222, 9}), 2);
    library->orvexInject(1001, 3, bytes);
    QTRY_COMPARE(recorder->timesSeen(Bytes{3, 222, 9}), 3);
    library->orvexSendTouchPacketToSystem(1001, 3, bytes);
    QTRY_COMPARE(recorder->timesSeen(Bytes{3, 222, 9}), 4);
}

void tst_entrypoints::refusedLoopBacks()
{
    QCOMPARE(library->orvexWritePacket(1001, "ab", -1), -1);
    QCOMPARE(library->orvexWritePacket(1001, nullptr, 1), -1);
    QCOMPARE(library->orvexWritePacket(1001, nullptr, 0), 0);
    QCOMPARE(library->orvexSendCommand(1001, nullptr), -1);
}

void tst_entrypoints::commandsAreAnswered()
{
    library->orvexSetCallback(1001, Recorder::data, recorder.get());
    QCOMPARE(library->orvexSendCommand(1001, ".\rU8\r"), 0);
    QTRY_COMPARE(recorder->timesSeen(50, "[.] streaming stopped!"), 1);
    QTRY_COMPARE(recorder->timesSeen(50, "[U8] frequency locked!"), 1);
    const std::size_t stopped = recorder->count();
    library->orvexSendCommand(1001, "B\r");
    QTRY_COMPARE(recorder->timesSeen(50, "[B] streaming!"), 1);
    QTRY_VERIFY(recorder->count() > stopped + 5);
}

void tst_entrypoints::voltagesAndStatusTextsOnRequest()
{
    library->setRate(1001, 1000);
    library->orvexSetCallback(1001, Recorder::data, recorder.get());
    QTRY_VERIFY(recorder->count() > 1500);
    QCOMPARE(recorder->timesSeen(119, ""), 0);
    library->orvexSendCommand(1001, "V\r");
    QTRY_VERIFY(recorder->timesSeen(119, "") > 0);
    library->orvexSendCommand(1001, "T\r");
    QTRY_VERIFY(recorder->timesSeen(119, "status: quality ") > 0);
}

void tst_entrypoints::closingCommands()
{
    library->orvexSetCallback(1001, Recorder::data, recorder.get());
    QCOMPARE(library->orvexSendCommand(1001, ":MDU0\r"), 0);
    QCOMPARE(library->orvexSendCommand(1001, ":MDP0\r"), 0);
    QTRY_COMPARE(recorder->timesSeen(50, "[:MDU0] goodbye!"), 1);
    QTRY_COMPARE(recorder->timesSeen(50, "[:MDP0] goodbye!"), 1);
}

void tst_entrypoints::settersWithoutGetters()
{
    unsigned char calibration[96] = {};
    library->orvexSetXferMask(1001, 255);
    library->orvexSetTwoFingerScroll(1001, 1);
    library->orvexSetDoubleClickDistance(1001, 300);
    library->orvexReverseButtons(1001, 1);
    library->orvexSetDriverDebugMode(1001, 1, 0xFFFFFFFF);
    library->orvexSetCalibrationData(1001, calibration);
    library->orvexSetCalibrationDataEx(1001, 1, 2, calibration);
    library->orvexSetWirelessCalibrationData(1001, calibration);
    QCOMPARE(library->orvexGetDeviceCount(), 2); // and all is as before
}

QTEST_APPLESS_MAIN(tst_entrypoints)
#include "tst_entrypoints.moc"
