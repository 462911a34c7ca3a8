#include <atomic>
#include <QElapsedTimer>
#include <set>

#include "simulator/simulatedlibrary.h"
#include "simulator/steps.h"
#include "support/tests.h"

/// Faults, as scenarios have them and as they are triggered.
class tst_faults : public Steps
{
    Q_OBJECT

private slots:
    void aBoardVanishesFromUnderItsCallbacks();
    void theFloodComesFromEightThreads();
    void theFloodPasses();
};

namespace {

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

PADSCOPE_TESTS(tst_faults);
#include "tst_faults.moc"
