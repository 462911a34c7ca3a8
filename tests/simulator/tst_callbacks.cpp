#include "simulator/simulatedlibrary.h"
#include "simulator/steps.h"
#include "support/tests.h"

#include <atomic>

/// Who is called, how often, on which thread, and for how long no more.
class tst_callbacks : public Steps
{
    Q_OBJECT

private slots:
    void clearingWaitsForTheRunningCall();
    void detachingWaitsForTheRunningCall();
    void manyThreadsAtOnce();
};

namespace {

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

} // namespace

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
        worker([&] { library.send(1001, nullptr, 0); }),
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
