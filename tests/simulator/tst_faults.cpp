#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

#include <atomic>
#include <QElapsedTimer>
#include <set>

/// Faults, as scenarios have them and as they are triggered.
class tst_faults : public QObject
{
    Q_OBJECT

private slots:
    void everyFaultIsListed();
    void everyFaultHasASentence();
    void everyFaultCanBeTriggered();
    void tellsWhichLastingFaultIsOn_data();
    void tellsWhichLastingFaultIsOn();
    void tellsNothingOfFaultsThatPass();
    void unknownFaults();
    void oneIndexCannotBeEnumerated();
    void theCountLies();
    void aBoardVanishesInMidReport();
    void aBoardVanishesOnce();
    void aBoardVanishesFromUnderItsCallbacks();
    void thePlugStorm();
    void theFloodComesFromEightThreads();
    void theFloodPasses();
    void garbageOnRequest();
    void aSlowCommand();
    void aCallbackWithinACommand();
    void detachInAStorm();
    void aStormGoesOnAfterADetach();
    void standingFaultsOutliveADetach();
    void aSlowCommandIsOne();
};

namespace {

std::vector<int> enumerated(SimulatedLibrary &library)
{
    std::vector<int> ids;
    for (int index = 0; index < library.orvexGetDeviceCount(); ++index) {
        _ORVEX_DEVICE_INFO record{};
        record.recordKind = 6;
        if (library.orvexEnumDeviceInfo(index, &record) == 1)
            ids.push_back(record.deviceId);
    }
    return ids;
}

unsigned long long delivered(SimulatedLibrary &library)
{
    unsigned long long count = 0;
    library.totals(nullptr, &count);
    return count;
}

void ignore(int, const unsigned char *, unsigned int, void *) {}

std::atomic<int> slowCalls{0};

void linger(int, const unsigned char *, unsigned int, void *)
{
    ++slowCalls;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

} // namespace

void tst_faults::everyFaultIsListed()
{
    SimulatedLibrary library;
    QStringList names;
    for (int i = 0; library.fault(i); ++i)
        names.append(library.fault(i));
    const QStringList expected{"vanish",       "plug-storm",          "flood",
                               "garbage",      "all-types",           "text-endless",
                               "text-long",    "text-markup",         "text-every-byte",
                               "slow-command", "callback-in-command", "enumeration-fails",
                               "lying-count"};
    QCOMPARE(names, expected);
    QVERIFY(!library.fault(-1));
}

void tst_faults::everyFaultHasASentence()
{
    SimulatedLibrary library;
    static const QRegularExpression sentence("^[A-Z0-9][^.]*\\.$");
    for (int i = 0; library.fault(i); ++i)
        QVERIFY2(sentence.match(library.faultText(library.fault(i))).hasMatch(), library.fault(i));
    QCOMPARE(library.faultText("slow-command"), "The next command takes 2 s.");
    QVERIFY(!library.faultText("none-such"));
    QVERIFY(!library.faultText(nullptr));
}

void tst_faults::tellsWhichLastingFaultIsOn_data()
{
    QTest::addColumn<QByteArray>("fault");
    for (const char *fault : {"callback-in-command", "enumeration-fails", "lying-count"})
        addRow(fault, QByteArray(fault));
}

void tst_faults::tellsWhichLastingFaultIsOn()
{
    QFETCH(QByteArray, fault);
    SimulatedLibrary library;
    QCOMPARE(library.faultIsOn(fault), 0);
    library.orvexAttach();
    QCOMPARE(library.faultIsOn(fault), 0);
    library.trigger(fault);
    QTRY_COMPARE(library.faultIsOn(fault), 1);
    library.trigger(fault);
    QTRY_COMPARE(library.faultIsOn(fault), 0);
    library.trigger(fault);
    QTRY_COMPARE(library.faultIsOn(fault), 1);
    library.orvexDetach();
    QCOMPARE(library.faultIsOn(fault), 0);
}

void tst_faults::tellsNothingOfFaultsThatPass()
{
    SimulatedLibrary library;
    library.orvexAttach();
    for (const char *fault : {"flood", "slow-command", "none-such", static_cast<const char *>(nullptr)})
        QCOMPARE(library.faultIsOn(fault), -1);
}

void tst_faults::everyFaultCanBeTriggered()
{
    SimulatedLibrary library;
    library.plug(2);
    library.orvexAttach();
    library.orvexSetCallback(1001, ignore, nullptr);
    library.orvexSetCallback(2, ignore, nullptr); // the first one vanishes
    for (int i = 0; library.fault(i); ++i)
        QVERIFY2(library.trigger(library.fault(i)) == 0, library.fault(i));
    QVERIFY(library.waitDelivered(50, 5000));
}

void tst_faults::unknownFaults()
{
    SimulatedLibrary library;
    QCOMPARE(library.trigger("garbage"), -1);
    QCOMPARE(library.error(), std::string("garbage: nobody is attached to a board; attach first"));
    library.orvexAttach();
    QCOMPARE(library.trigger("fire"), -1);
    QVERIFY(library.error().find("fire: there is no such fault; allowed are vanish, plug-storm,") == 0);
    QCOMPARE(library.trigger(nullptr), -1);
    library.unplug(1001);
    QCOMPARE(library.trigger("garbage"), -1);
}

void tst_faults::oneIndexCannotBeEnumerated()
{
    SimulatedLibrary library;
    library.choose("enumeration-fails");
    library.orvexAttach();
    QCOMPARE(library.orvexGetDeviceCount(), 3);
    QCOMPARE(enumerated(library), (std::vector<int>{1001, 1003}));
    library.choose("default");
    QCOMPARE(enumerated(library), std::vector<int>{1001});
    library.trigger("enumeration-fails");
    QTRY_COMPARE(enumerated(library), std::vector<int>{});
    library.trigger("enumeration-fails");
    QTRY_COMPARE(enumerated(library), std::vector<int>{1001});
}

void tst_faults::theCountLies()
{
    SimulatedLibrary library;
    library.choose("lying-count");
    library.orvexAttach();
    QCOMPARE(library.orvexGetDeviceCount(), 3);
    QCOMPARE(enumerated(library), std::vector<int>{1001});
    library.trigger("lying-count");
    QTRY_COMPARE(library.orvexGetDeviceCount(), 1);
}

void tst_faults::aBoardVanishesInMidReport()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.choose("vanish");
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &recorder);
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_COMPARE(recorder.notices(), std::size_t{1});
    QCOMPARE(library.boardIds(), std::vector<int>{1002});
    // Three seconds of reports, and half of one that was to have 40 bytes.
    const auto seen = recorder.deliveries();
    QCOMPARE(seen.size(), std::size_t{302});
    QCOMPARE(seen.back().bytes.size(), std::size_t{20});
    QCOMPARE(static_cast<int>(seen.back().bytes.front()), 40);
    QCOMPARE(library.orvexSendCommand(1001, "?"), -1);
}

void tst_faults::aBoardVanishesOnce()
{
    SimulatedLibrary library;
    library.choose("vanish");
    library.orvexAttach();
    library.orvexSetCallback(1001, ignore, nullptr);
    QTRY_COMPARE(library.boardIds(), std::vector<int>{1002});
    library.orvexDetach();
    library.orvexAttach();
    QCOMPARE(library.boardIds(), std::vector<int>{1002}); // it stays away
    library.plug(1001);
    Recorder recorder;
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 350); // three seconds are over
    QCOMPARE(library.boardIds(), (std::vector<int>{1002, 1001}));
    library.orvexDetach();
}

void tst_faults::aBoardVanishesFromUnderItsCallbacks()
{
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, linger, nullptr);
    QTRY_VERIFY(slowCalls > 0);
    std::thread other([&] {
        const unsigned char bytes[] = {2, 200};
        while (library.send(1001, bytes, 2) >= 0) {
        }
    });
    library.trigger("vanish");
    other.join();
    QCOMPARE(library.boardIds(), std::vector<int>{});
    library.orvexDetach();
}

void tst_faults::thePlugStorm()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.choose("plug-storm");
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &recorder);
    QTRY_COMPARE(recorder.notices(), std::size_t{500});
    QTest::qWait(100); // then quiet
    QCOMPARE(recorder.notices(), std::size_t{500});
    QCOMPARE(library.boardIds(), std::vector<int>{1001});
}

void tst_faults::theFloodComesFromEightThreads()
{
    SimulatedLibrary library;
    library.choose("flood");
    library.orvexAttach();
    for (int id = 1001; id <= 1008; ++id)
        library.orvexSetCallback(id, ignore, nullptr);
    QVERIFY(library.waitDelivered(FLOOD_RATE / 5, 5000)); // it has begun everywhere
    const unsigned long long before = delivered(library);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(library.waitDelivered(before + 2 * FLOOD_RATE, 10000));
    // Time is what a rate is about.
    QVERIFY2(timer.elapsed() > 1900 && timer.elapsed() < 2400, QByteArray::number(timer.elapsed()));
    Recorder recorder;
    for (int id = 1001; id <= 1008; ++id)
        library.orvexSetCallback(id, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 200);
    std::set<std::thread::id> threads;
    for (const Recorder::Delivery &delivery : recorder.deliveries())
        threads.insert(delivery.thread);
    library.orvexDetach();
    QCOMPARE(threads.size(), std::size_t{8});
}

void tst_faults::theFloodPasses()
{
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, ignore, nullptr);
    library.trigger("flood"); // for five seconds
    QVERIFY(library.waitDelivered(4 * FLOOD_RATE, 10000));
    QVERIFY(library.waitDelivered(5 * FLOOD_RATE, 10000));
    const unsigned long long before = delivered(library);
    QTest::qWait(1000);
    QVERIFY(delivered(library) - before < 300);
}

void tst_faults::garbageOnRequest()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.setRate(1001, 1);
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    library.trigger("garbage");
    QTRY_VERIFY(recorder.count() >= 650);
    std::set<std::size_t> lengths;
    for (const Recorder::Delivery &delivery : recorder.deliveries())
        lengths.insert(delivery.bytes.size());
    for (std::size_t length = 0; length <= 64; ++length)
        QVERIFY(lengths.count(length));
}

void tst_faults::aSlowCommand()
{
    SimulatedLibrary library;
    library.choose("slow-command");
    library.orvexAttach();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(library.orvexSendCommand(1001, "?"), 0);
    QVERIFY2(timer.elapsed() >= 1990, QByteArray::number(timer.elapsed()));
    timer.restart();
    QCOMPARE(library.orvexSendCommand(1001, "?"), 0); // the next one is as fast as any
    QVERIFY2(timer.elapsed() < 1000, QByteArray::number(timer.elapsed()));
}

void tst_faults::aCallbackWithinACommand()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.choose("callback-in-command");
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QCOMPARE(library.orvexSendCommand(1001, "?"), 0);
    QCOMPARE(recorder.timesSeen(50, "within the command!"), 1);
    for (const Recorder::Delivery &delivery : recorder.deliveries()) {
        const std::string text(delivery.bytes.begin(), delivery.bytes.end());
        QCOMPARE(delivery.thread == std::this_thread::get_id(),
                 text.find("within the command!") != std::string::npos);
    }
    library.choose("default");
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    library.orvexSendCommand(1001, "?");
    QCOMPARE(recorder.timesSeen(50, "within the command!"), 1);
}

void tst_faults::detachInAStorm()
{
    SimulatedLibrary library;
    Recorder recorder;
    for (int i = 0; i < 5; ++i) {
        library.orvexAttach();
        library.orvexSetPnpCallback(Recorder::pnp, &recorder);
        library.trigger("plug-storm");
        const std::size_t seen = recorder.notices();
        QTRY_VERIFY(recorder.notices() > seen + 20);
        library.orvexDetach();
        const std::size_t last = recorder.notices();
        QTest::qWait(20);
        QCOMPARE(recorder.notices(), last);
    }
}

void tst_faults::aStormGoesOnAfterADetach()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.trigger("plug-storm");
    QTRY_COMPARE(library.boardIds(), (std::vector<int>{1001, 9999}));
    library.orvexDetach();
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &recorder);
    // The last of ten times that board 9999 comes or goes is the 451st of 500 notices.
    QTRY_COMPARE(library.boardIds(), std::vector<int>{1001});
    QVERIFY(recorder.notices() < 500);
}

void tst_faults::standingFaultsOutliveADetach()
{
    SimulatedLibrary library;
    library.choose("lying-count");
    for (int attach = 0; attach < 3; ++attach) {
        library.orvexAttach();
        QCOMPARE(library.orvexGetDeviceCount(), 3);
        library.orvexDetach();
    }
    library.choose("default");
    library.orvexAttach();
    QCOMPARE(library.orvexGetDeviceCount(), 1);
}

void tst_faults::aSlowCommandIsOne()
{
    SimulatedLibrary library;
    library.choose("slow-command");
    library.orvexAttach();
    library.orvexDetach(); // without a command
    QElapsedTimer timer;
    for (const bool slow : {true, false}) {
        library.orvexAttach();
        timer.start();
        QCOMPARE(library.orvexSendCommand(1001, "?"), 0);
        QCOMPARE(timer.elapsed() >= 1990, slow);
        library.orvexDetach();
    }
}

PADSCOPE_TESTS(tst_faults);
#include "tst_faults.moc"
