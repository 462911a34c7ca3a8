#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

#include <atomic>
#include <set>

/// Who is called, how often, on which thread, and for how long no more.
class tst_callbacks : public QObject
{
    Q_OBJECT

private slots:
    void theSameOneCountsOnce();
    void contextsAndFunctionsAreToldApart();
    void nullIsNoCallback();
    void sentBytesComeOnTheCallersThread();
    void shortAndMissingBytes();
    void aBoardHasAThreadOfItsOwn();
    void aClearedOneIsNotCalledAgain();
    void clearingWaitsForTheRunningCall();
    void clearingFromWithinDoesNotWait();
    void detachingWaitsForTheRunningCall();
    void deviceZeroClearsThePnpCallback();
    void entryPointsFromWithinACallback();
    void manyThreadsAtOnce();
};

namespace {

constexpr unsigned char unknownBytes[] = {4, 200, 1, 2};
const Bytes unknownReport{4, 200, 1, 2};

/// A listener whose call lasts until it is let go.
struct Gate
{
    std::atomic<bool> entered{false};
    std::atomic<bool> open{false};
    std::atomic<bool> left{false};

    static void data(int, const unsigned char *, unsigned int, void *self)
    {
        auto &gate = *static_cast<Gate *>(self);
        gate.entered = true;
        while (!gate.open)
            std::this_thread::yield();
        gate.left = true;
    }
};

struct Caller
{
    SimulatedLibrary &library;
    std::atomic<int> calls{0};

    static void clearItself(int device, const unsigned char *, unsigned int, void *self)
    {
        auto &caller = *static_cast<Caller *>(self);
        ++caller.calls;
        caller.library.orvexClearCallback(device, clearItself, self);
    }

    static void useEverything(int device, const unsigned char *, unsigned int, void *self)
    {
        auto &caller = *static_cast<Caller *>(self);
        _ORVEX_DEVICE_INFO record{};
        record.recordKind = 6;
        caller.library.orvexGetDeviceCount();
        caller.library.orvexEnumDeviceInfo(0, &record);
        caller.library.orvexSetXferMask(device, 1);
        caller.library.orvexSendCommand(device, "?");
        caller.library.orvexSetCallback(device, useEverything, self);
        caller.library.plug(50);
        caller.library.unplug(50);
        ++caller.calls;
    }
};

} // namespace

void tst_callbacks::theSameOneCountsOnce()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    for (int i = 0; i < 3; ++i)
        library.orvexSetCallback(1001, Recorder::data, &recorder);
    QCOMPARE(library.send(1001, unknownBytes, 4), 1);
    QCOMPARE(recorder.timesSeen(unknownReport), 1);
}

void tst_callbacks::contextsAndFunctionsAreToldApart()
{
    Recorder first, second;
    Gate gate;
    gate.open = true;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &first);
    library.orvexSetCallback(1001, Recorder::data, &second);
    library.orvexSetCallback(1001, Gate::data, &gate);
    QCOMPARE(library.send(1001, unknownBytes, 4), 3);
    QCOMPARE(first.timesSeen(unknownReport), 1);
    QCOMPARE(second.timesSeen(unknownReport), 1);
    library.orvexClearCallback(1001, Recorder::data, &second);
    QCOMPARE(library.send(1001, unknownBytes, 4), 2);
    QCOMPARE(second.timesSeen(unknownReport), 1);
}

void tst_callbacks::nullIsNoCallback()
{
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, nullptr, nullptr);
    library.orvexSetPnpCallback(nullptr, nullptr);
    QCOMPARE(library.send(1001, unknownBytes, 4), 0);
    QCOMPARE(library.plug(2), 0);
}

void tst_callbacks::sentBytesComeOnTheCallersThread()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QCOMPARE(library.send(1001, unknownBytes, 4), 1);
    for (const Recorder::Delivery &delivery : recorder.deliveries())
        QCOMPARE(delivery.thread == std::this_thread::get_id(), delivery.bytes == unknownReport);
    QCOMPARE(library.send(1002, unknownBytes, 4), -1);
}

void tst_callbacks::shortAndMissingBytes()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QCOMPARE(library.send(1001, nullptr, 0), 1);
    QCOMPARE(recorder.timesSeen(Bytes{}), 1);
    QCOMPARE(library.send(1001, unknownBytes, 1), 1);
    QCOMPARE(recorder.timesSeen(Bytes{4}), 1);
}

void tst_callbacks::aBoardHasAThreadOfItsOwn()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.plug(2);
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    library.orvexSetCallback(2, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 20);
    std::set<std::pair<int, std::thread::id>> pairs;
    for (const Recorder::Delivery &delivery : recorder.deliveries())
        pairs.insert({delivery.device, delivery.thread});
    QCOMPARE(pairs.size(), std::size_t{2});
    QVERIFY(pairs.begin()->second != pairs.rbegin()->second);
}

void tst_callbacks::aClearedOneIsNotCalledAgain()
{
    Recorder cleared, kept;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &cleared);
    library.orvexSetCallback(1001, Recorder::data, &kept);
    QTRY_VERIFY(cleared.count() > 0);
    library.orvexClearCallback(1001, Recorder::data, &cleared);
    const std::size_t last = cleared.count();
    const std::size_t seen = kept.count();
    QTRY_VERIFY(kept.count() > seen + 5);
    QCOMPARE(cleared.count(), last);
}

void tst_callbacks::clearingWaitsForTheRunningCall()
{
    Gate gate;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Gate::data, &gate);
    QTRY_VERIFY(gate.entered);
    std::atomic<bool> cleared{false};
    std::atomic<bool> lateCall{false};
    std::thread clearer([&] {
        library.orvexClearCallback(1001, Gate::data, &gate);
        lateCall = !gate.left;
        cleared = true;
    });
    QTest::qWait(50); // long enough for a clearing that does not wait to be seen
    QVERIFY(!cleared);
    gate.open = true;
    clearer.join();
    QVERIFY(!lateCall);
}

void tst_callbacks::clearingFromWithinDoesNotWait()
{
    SimulatedLibrary library;
    Caller caller{library};
    library.orvexAttach();
    library.orvexSetCallback(1001, Caller::clearItself, &caller);
    QTRY_COMPARE(caller.calls.load(), 1);
    QCOMPARE(library.send(1001, unknownBytes, 4), 0);
    QCOMPARE(caller.calls.load(), 1);
}

void tst_callbacks::detachingWaitsForTheRunningCall()
{
    Gate gate;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Gate::data, &gate);
    QTRY_VERIFY(gate.entered);
    std::atomic<int> lateCalls{0};
    const auto detach = [&] {
        library.orvexDetach();
        if (!gate.left)
            ++lateCalls;
    };
    std::thread first(detach);
    std::thread second(detach);
    QTest::qWait(50);
    gate.open = true;
    first.join();
    second.join();
    QCOMPARE(lateCalls.load(), 0);
}

void tst_callbacks::deviceZeroClearsThePnpCallback()
{
    Recorder cleared, kept;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &cleared);
    library.orvexSetPnpCallback(Recorder::pnp, &cleared);
    library.orvexSetPnpCallback(Recorder::pnp, &kept);
    library.plug(2);
    QTRY_COMPARE(kept.notices(), std::size_t{1});
    QTRY_COMPARE(cleared.notices(), std::size_t{1});
    const auto asData = reinterpret_cast<OrvexDataCallback>(reinterpret_cast<void (*)()>(Recorder::pnp));
    library.orvexClearCallback(1001, asData, &cleared);
    library.plug(3);
    QTRY_COMPARE(kept.notices(), std::size_t{2});
    QTRY_COMPARE(cleared.notices(), std::size_t{2});
    library.orvexClearCallback(0, asData, &cleared);
    library.plug(4);
    QTRY_COMPARE(kept.notices(), std::size_t{3});
    QCOMPARE(cleared.notices(), std::size_t{2});
}

void tst_callbacks::entryPointsFromWithinACallback()
{
    SimulatedLibrary library;
    Caller caller{library};
    library.orvexAttach();
    library.orvexSetCallback(1001, Caller::useEverything, &caller);
    QTRY_VERIFY(caller.calls > 10);
    library.orvexDetach();
}

void tst_callbacks::manyThreadsAtOnce()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.setRate(1001, 2000);
    std::atomic<bool> done{false};
    const auto worker = [&](auto work) {
        return std::thread([&done, work] {
            while (!done)
                work();
        });
    };
    std::thread threads[] = {
        worker([&] { library.orvexAttach(); }),
        worker([&] { library.orvexSetCallback(1001, Recorder::data, &recorder); }),
        worker([&] { library.orvexClearCallback(1001, Recorder::data, &recorder); }),
        worker([&] { library.send(1001, unknownBytes, 4); }),
        worker([&] { library.plug(2), library.unplug(2); }),
        worker([&] { library.orvexSendCommand(1001, "V"); }),
        worker([&] { library.orvexDetach(); }),
    };
    QTRY_VERIFY(recorder.count() > 50);
    done = true;
    for (std::thread &thread : threads)
        thread.join();
}

PADSCOPE_TESTS(tst_callbacks);
#include "tst_callbacks.moc"
