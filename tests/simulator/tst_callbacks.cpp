#include <atomic>

#include "simulator/simulatedlibrary.h"
#include "simulator/steps.h"
#include "support/tests.h"

/// Who is called, how often, on which thread, and for how long no more.
class tst_callbacks : public Steps
{
    Q_OBJECT

private slots:
    void theRunningCallIsWaitedFor_data();
    void theRunningCallIsWaitedFor();
    void aDetachWithinACallbackWaitsForNoOther();
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

void tst_callbacks::theRunningCallIsWaitedFor_data()
{
    QTest::addColumn<bool>("detaches");
    addRow("by a clearing", false);
    addRow("by a detach", true);
}

void tst_callbacks::theRunningCallIsWaitedFor()
{
    QFETCH(bool, detaches);
    Gate gate;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Gate::data, &gate);
    QTRY_VERIFY(gate.entered);
    std::atomic<int> early{0};
    const auto wait = [&] {
        if (detaches)
            library.orvexDetach();
        else
            library.orvexClearCallback(1001, Gate::data, &gate);
        early += gate.left ? 0 : 1;
    };
    std::thread first(wait);
    std::thread second([&] {
        if (detaches)
            wait();
    });
    QTest::qWait(50); // long enough for one that does not wait to be seen
    gate.open = true;
    first.join();
    second.join();
    QCOMPARE(early.load(), 0);
}

void tst_callbacks::aDetachWithinACallbackWaitsForNoOther()
{
    Gate gate;
    Recorder detacher;
    SimulatedLibrary library;
    std::atomic<bool> detached{false};
    detacher.action = [&](int) {
        library.orvexDetach();
        detached = true;
    };
    library.orvexAttach();
    library.orvexSetCallback(1001, Gate::data, &gate);
    QTRY_VERIFY(gate.entered);
    library.orvexSetPnpCallback(Recorder::pnp, &detacher);
    library.plug(2);
    const bool waited = !QTest::qWaitFor([&] { return detached.load(); });
    gate.open = true; // or the threads could not end
    QVERIFY(!waited);
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
