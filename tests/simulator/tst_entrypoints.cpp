#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

/// Commands, and the entry points that do nothing.
class tst_entrypoints : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void refusedCommands();
    void everyOtherReturnsWhatTheBindingDoesWithoutIt();
    void commandsAreAnswered();
    void voltagesAndStatusTextsOnRequest();
    void closingCommands();

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

void tst_entrypoints::refusedCommands()
{
    QCOMPARE(library->orvexSendCommand(5, "?"), -1);
    QCOMPARE(library->orvexSendCommand(1001, nullptr), -1);
}

void tst_entrypoints::everyOtherReturnsWhatTheBindingDoesWithoutIt()
{
    unsigned char byte = 7;
    int number = 7;
    QCOMPARE(library->orvexInterface(), 0);
    QCOMPARE(library->orvexWritePacket(1001, "ab", 2), -1);
    QCOMPARE(library->orvexGetTouchEnabled(1001), std::uint8_t{1});
    QCOMPARE(library->orvexGetTouchDestination(1001), -1);
    QCOMPARE(library->orvexIsSomethingOnBoard(1001), 0);
    QCOMPARE(library->orvexOpenSynchronousChannel(1001, nullptr, nullptr), -1);
    QCOMPARE(library->orvexReadSynchronousPacket(1001, 1, &byte, 1, 60000), -1);
    QCOMPARE(library->orvexSerialGetConnected(&number), 0);
    library->orvexGetCalibrationPoints(1001, &number, nullptr);
    library->orvexLibraryVersionNumber(&byte, nullptr, nullptr, nullptr);
    library->orvexLock();
    library->orvexLock();
    library->orvexSetXferMask(1001, 0);
    QCOMPARE(number, 7);
    QCOMPARE(static_cast<int>(byte), 7);
    library->orvexSetCallback(1001, Recorder::data, recorder.get());
    QTRY_VERIFY(recorder->count() > 0); // whatever the mask
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

PADSCOPE_TESTS(tst_entrypoints);
#include "tst_entrypoints.moc"
