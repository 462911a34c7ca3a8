#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

#include <atomic>
#include <unistd.h>

/// What hosts and tests control the library with.
class tst_control : public QObject
{
    Q_OBJECT

private slots:
    void listsTheBoards();
    void sendsOnTheThreadThatIsAskedFor();
    void refusesOtherThreads();
    void countsWhatWasSentAndDelivered();
    void countsOutliveTheBoard();
    void waitsForDeliveries();
    void theJournalNamesCallsAndArguments();
    void theJournalKeepsTheLast4096Calls();
    void theJournalReadsFromANumberOn();
    void textsAreCutToTheBuffer();
    void totalRateIsLimited();
};

namespace {

constexpr unsigned char unknownBytes[] = {4, 200, 1, 2};
const Bytes unknownReport{4, 200, 1, 2};

void ignore(int, const unsigned char *, unsigned int, void *) {}

std::thread::id threadOf(const Recorder &recorder, const Bytes &bytes)
{
    for (const Recorder::Delivery &delivery : recorder.deliveries()) {
        if (delivery.bytes == bytes)
            return delivery.thread;
    }
    return {};
}

std::thread::id boardThreadOf(const Recorder &recorder)
{
    return recorder.deliveries().front().thread;
}

} // namespace

void tst_control::listsTheBoards()
{
    SimulatedLibrary library;
    library.plug(-3);
    QCOMPARE(library.boardIds(), (std::vector<int>{1001, -3}));
    int first = 0;
    QCOMPARE(library.boards(&first, 1), 2);
    QCOMPARE(first, 1001);
    library.orvexAttach();
    library.unplug(1001);
    QCOMPARE(library.boardIds(), std::vector<int>{-3});
}

void tst_control::sendsOnTheThreadThatIsAskedFor()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 0);

    QCOMPARE(library.sendOn(ORVEXSIM_CALLERS_THREAD, 1001, unknownBytes, 4), 1);
    QVERIFY(threadOf(recorder, unknownReport) == std::this_thread::get_id());

    QCOMPARE(library.sendOn(ORVEXSIM_NEW_THREAD, 1001, unknownBytes, 3), 1);
    const Bytes sentOnNew{4, 200, 1};
    QVERIFY(threadOf(recorder, sentOnNew) != std::thread::id{});
    QVERIFY(threadOf(recorder, sentOnNew) != std::this_thread::get_id());
    QVERIFY(threadOf(recorder, sentOnNew) != boardThreadOf(recorder));

    QCOMPARE(library.sendOn(ORVEXSIM_BOARDS_THREAD, 1001, unknownBytes, 2), 0);
    const Bytes sentOnBoards{4, 200};
    QTRY_VERIFY(threadOf(recorder, sentOnBoards) == boardThreadOf(recorder));
}

void tst_control::refusesOtherThreads()
{
    SimulatedLibrary library;
    QCOMPARE(library.sendOn(ORVEXSIM_NEW_THREAD, 1001, unknownBytes, 4), -1); // nobody is attached
    library.orvexAttach();
    QCOMPARE(library.sendOn(3, 1001, unknownBytes, 4), -1);
    QCOMPARE(library.sendOn(ORVEXSIM_NEW_THREAD, 1002, unknownBytes, 4), -1);
}

void tst_control::countsWhatWasSentAndDelivered()
{
    SimulatedLibrary library;
    unsigned long long sent = 99;
    unsigned long long delivered = 99;
    library.plug(2);
    library.orvexAttach();
    QCOMPARE(library.counts(2, &sent, &delivered), 0);
    QCOMPARE(sent, 0ULL);
    QCOMPARE(delivered, 0ULL);
    library.send(2, unknownBytes, 4); // nobody listens
    int contexts[2] = {};
    library.orvexSendCommand(2, "."); // it streams nothing of its own
    library.orvexSetCallback(2, ignore, &contexts[0]);
    QCOMPARE(library.waitDelivered(2, 5000), 1); // it greets and answers
    QCOMPARE(library.counts(2, &sent, &delivered), 0);
    QCOMPARE(sent, 3ULL);
    QCOMPARE(delivered, 2ULL);
    library.orvexSetCallback(2, ignore, &contexts[1]);
    library.send(2, unknownBytes, 4);
    unsigned long long sentAfter = 0;
    unsigned long long deliveredAfter = 0;
    library.counts(2, &sentAfter, &deliveredAfter);
    QCOMPARE(sentAfter, sent + 1);
    QCOMPARE(deliveredAfter, delivered + 2);
    QCOMPARE(library.counts(3, &sent, &delivered), -1);
    library.totals(&sent, &delivered);
    QCOMPARE(sent, sentAfter); // of no other board
    QCOMPARE(delivered, deliveredAfter);
}

void tst_control::countsOutliveTheBoard()
{
    SimulatedLibrary library;
    unsigned long long sent = 0;
    library.orvexAttach();
    library.send(1001, unknownBytes, 4);
    library.unplug(1001);
    library.orvexDetach();
    QCOMPARE(library.counts(1001, &sent, nullptr), 0);
    QCOMPARE(sent, 1ULL);
}

void tst_control::waitsForDeliveries()
{
    SimulatedLibrary library;
    library.orvexAttach();
    QCOMPARE(library.waitDelivered(1, 20), 0);
    library.orvexSetCallback(1001, ignore, nullptr);
    QCOMPARE(library.waitDelivered(20, 5000), 1);
    unsigned long long delivered = 0;
    library.totals(nullptr, &delivered);
    QVERIFY(delivered >= 20);
}

void tst_control::theJournalNamesCallsAndArguments()
{
    SimulatedLibrary library;
    _ORVEX_DEVICE_INFO record{};
    const unsigned char bytes[] = {1, 0xAB};
    QCOMPARE(library.journalLength(), 0ULL);
    library.orvexAttach();
    library.orvexEnumDeviceInfo(0, &record);
    library.orvexSetCallback(1001, ignore, nullptr);
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

void tst_control::theJournalKeepsTheLast4096Calls()
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

void tst_control::theJournalReadsFromANumberOn()
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

void tst_control::totalRateIsLimited()
{
    SimulatedLibrary library;
    library.plug(2);
    library.plug(3);
    QCOMPARE(library.setRate(1001, 10000), 0);
    QCOMPARE(library.setRate(2, 9900), 0);
    QCOMPARE(library.setRate(2, 9901), -1); // with the 100 of the third one too many
    QCOMPARE(library.plug(4), -1);
    QCOMPARE(library.setRate(2, 9800), 0);
    QCOMPARE(library.plug(4), 0);
}

PADSCOPE_TESTS(tst_control);
#include "tst_control.moc"
