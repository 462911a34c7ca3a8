#include <unistd.h>

#include "simulator/simulatedlibrary.h"
#include "simulator/steps.h"
#include "support/tests.h"

/// What hosts and tests control the library with, its commands, and the entry points that do nothing.
class tst_control : public Steps
{
    Q_OBJECT

private slots:
    void listsOnlySoManyBoards();
    void theLogNamesCallsAndArguments();
    void theLogKeepsTheLast4096Calls();
    void theLogReadsFromANumberOn();
    void textsAreCutToTheBuffer();
    void everyOtherReturnsWhatTheBindingDoesWithoutIt();
};

void tst_control::listsOnlySoManyBoards()
{
    SimulatedLibrary library;
    library.plug(-3);
    int ids[2] = {7, 7};
    QCOMPARE(library.boards(ids, 1), 2);
    QCOMPARE(ids[0], 1001);
    QCOMPARE(ids[1], 7);
}

void tst_control::theLogNamesCallsAndArguments()
{
    SimulatedLibrary library;
    _ORVEX_DEVICE_INFO record{};
    const unsigned char bytes[] = {1, 0xAB};
    QCOMPARE(library.journalLength(), 0ULL);
    library.orvexAttach();
    library.orvexEnumDeviceInfo(0, &record);
    // Whatever the board's thread delivers before the detach.
    library.orvexSetCallback(
        1001, [](int, const unsigned char *, unsigned int, void *) {}, nullptr);
    library.orvexSetXferMask(1001, 255);
    library.orvexSendCommand(1001, ":MDU0\r");
    library.orvexSendCommand(-1, "a\"\\\x07");
    library.orvexSendCommand(1001, nullptr);
    library.orvexSetDriverDebugMode(1001, 1, 0xFFFFFFFF);
    library.orvexEcho(1001, 2, bytes);
    library.orvexSetTouchDestination(1001, 3);
    library.orvexReadSynchronousPacket(1001, 1, nullptr, 4, 0);
    library.orvexDetach();
    const std::vector<std::string> expected{
        "orvexAttach()",
        "orvexEnumDeviceInfo(0, pointer)",
        "orvexSetCallback(1001, callback, null)",
        "orvexSetXferMask(1001, 255)",
        "orvexSendCommand(1001, \":MDU0\\r\")",
        "orvexSendCommand(-1, \"a\\\"\\\\\\x07\")",
        "orvexSendCommand(1001, null)",
        "orvexSetDriverDebugMode(1001, 1, 4294967295)",
        "orvexEcho(1001, 2, pointer)",
        "orvexSetTouchDestination(1001, 3)",
        "orvexReadSynchronousPacket(1001, 1, null, 4, 0)",
        "orvexDetach()",
    };
    QCOMPARE(library.callsFrom(0), expected);
    QCOMPARE(library.journalLength(), 12ULL);
}

void tst_control::theLogKeepsTheLast4096Calls()
{
    SimulatedLibrary library;
    for (int i = 0; i < 5000; ++i)
        library.orvexSetXferMask(i, 1);
    QCOMPARE(library.journalLength(), 5000ULL);
    const auto calls = library.callsFrom(0);
    QCOMPARE(calls.size(), std::size_t{4096});
    QCOMPARE(calls.front(), std::string("orvexSetXferMask(904, 1)"));
    QCOMPARE(calls.back(), std::string("orvexSetXferMask(4999, 1)"));
}

void tst_control::theLogReadsFromANumberOn()
{
    SimulatedLibrary library;
    for (int i = 0; i < 5; ++i)
        library.orvexSetXferMask(i, 1);
    OrvexsimCall calls[2] = {};
    QCOMPARE(library.journal(1, calls, 2), 2);
    QCOMPARE(calls[0].number, 1ULL);
    QCOMPARE(calls[1].number, 2ULL);
    QVERIFY(calls[0].microseconds <= calls[1].microseconds);
    QCOMPARE(calls[0].thread, static_cast<unsigned long long>(gettid()));
    QCOMPARE(library.journal(5, calls, 2), 0);
    const std::string longCommand(5000, 'x');
    library.orvexSendCommand(1, longCommand.c_str());
    QCOMPARE(library.journal(5, calls, 2), 1);
    QCOMPARE(qstrlen(calls[0].text), 103U);
}

void tst_control::textsAreCutToTheBuffer()
{
    SimulatedLibrary library;
    char buffer[4] = {'x', 'x', 'x', 'x'};
    QCOMPARE(library.currentScenario(buffer, 4), 7);
    QCOMPARE(QByteArray(buffer), QByteArray("def"));
    QCOMPARE(library.currentScenario(nullptr, 0), 7);
    QCOMPARE(library.lastError(buffer, 4), 0);
    QCOMPARE(QByteArray(buffer), QByteArray(""));
}

void tst_control::everyOtherReturnsWhatTheBindingDoesWithoutIt()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    unsigned char byte = 7;
    int number = 7;
    QCOMPARE(library.orvexInterface(), 0);
    QCOMPARE(library.orvexWritePacket(1001, "ab", 2), -1);
    QCOMPARE(library.orvexGetTouchEnabled(1001), std::uint8_t{1});
    QCOMPARE(library.orvexGetTouchDestination(1001), -1);
    QCOMPARE(library.orvexIsSomethingOnBoard(1001), 0);
    QCOMPARE(library.orvexOpenSynchronousChannel(1001, nullptr, nullptr), -1);
    QCOMPARE(library.orvexReadSynchronousPacket(1001, 1, &byte, 1, 60000), -1);
    QCOMPARE(library.orvexSerialGetConnected(&number), 0);
    library.orvexGetCalibrationPoints(1001, &number, nullptr);
    library.orvexLibraryVersionNumber(&byte, nullptr, nullptr, nullptr);
    library.orvexLock();
    library.orvexLock();
    library.orvexSetXferMask(1001, 0);
    QCOMPARE(number, 7);
    QCOMPARE(static_cast<int>(byte), 7);
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 0); // whatever the mask
}

PADSCOPE_TESTS(tst_control);
#include "tst_control.moc"
