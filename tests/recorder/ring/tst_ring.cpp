#include <cstdlib>
#include <map>
#include <thread>

#include "consumer.h"
#include "producer.h"
#include "support/tests.h"

using ring::Consumer;

namespace {

/// A control block with its cells, all zero.
class Memory
{
public:
    explicit Memory(std::uint32_t cellCount)
        : control(static_cast<ring::Control *>(std::calloc(1, ring::sizeOf(cellCount))))
    {
        control->key = 0x9E3779B97F4A7C15;
        control->cellCount = cellCount;
    }
    ~Memory() { std::free(control); }
    Memory(const Memory &) = delete;
    Memory &operator=(const Memory &) = delete;

    ring::Control *operator->() const { return control; }
    ring::Control &operator*() const { return *control; }

private:
    ring::Control *control;
};

ring::Put putText(ring::Control &control, const std::string &text, bool mayUseReserve = true)
{
    ring::Crossing crossing;
    crossing.mayUseReserve = mayUseReserve;
    const ring::Piece pieces[] = {{text.data(), text.size() / 2},
                                  {text.data() + text.size() / 2, text.size() - text.size() / 2}};
    return ring::put(control, crossing, pieces, 2);
}

/// What a producer leaves that died between its reservation and its commit.
void leaveHole(ring::Control &control, std::uint32_t cells)
{
    control.reserved += (std::uint64_t{1} << 32) + cells;
}

} // namespace

class RingTests : public QObject
{
    Q_OBJECT

private slots:
    void aRecordComesOutAsItWent();
    void recordsGoOnAtTheBeginning();
    void countsMayWrap();
    void lossesAreCounted();
    void reportsLeaveAnEighth();
    void aHoleIsWaitedForWhileItsOwnerLives();
    void aHoleIsALossOnceItsOwnerIsDead();
    void threadsTakeNothingFromEachOther();
    void anyBytesInTheRing();
    void boardsAreCounted();
    void fewSlotsAreLookedAtForABoard();
};

void RingTests::aRecordComesOutAsItWent()
{
    const Memory memory(16);
    Consumer consumer(*memory);
    ring::Crossing crossing;
    crossing.kind = 3;
    crossing.flags = 6;
    crossing.call = 41;
    crossing.board = -7;
    crossing.result = -2;
    crossing.thread = 1234;
    crossing.link = 5;
    crossing.originalLength = 70'000;
    const ring::Piece pieces[] = {{"abc", 3}, {nullptr, 0}, {"de", 2}};
    const ring::Put put = ring::put(*memory, crossing, pieces, 3);
    QVERIFY(!put.isLost);
    QCOMPARE(put.crossing, 0U);
    ring::Taken taken;
    QCOMPARE(consumer.take(taken, false), Consumer::Step::Record);
    QCOMPARE(taken.payload, std::string("abcde"));
    QCOMPARE(int{taken.kind}, 3);
    QCOMPARE(int{taken.flags}, 6);
    QCOMPARE(int{taken.call}, 41);
    QCOMPARE(taken.board, -7);
    QCOMPARE(taken.result, -2);
    QCOMPARE(taken.thread, 1234U);
    QCOMPARE(taken.link, 5U);
    QCOMPARE(taken.originalLength, 70'000U);
    QVERIFY(taken.clockNs > 0);
    QCOMPARE(consumer.take(taken, false), Consumer::Step::Empty);
}

void RingTests::recordsGoOnAtTheBeginning()
{
    const Memory memory(16);
    Consumer consumer(*memory);
    ring::Taken taken;
    for (std::size_t length = 0; length < 976; ++length) { // 976 bytes fill the ring with their head
        std::string text(length, 'x');
        for (std::size_t i = 0; i < length; ++i)
            text[i] = static_cast<char>(i * 7 + length);
        QVERIFY(!putText(*memory, text).isLost);
        QCOMPARE(consumer.take(taken, false), Consumer::Step::Record);
        QCOMPARE(taken.crossing, std::uint64_t{length});
        QVERIFY(taken.payload == text);
    }
    QVERIFY(putText(*memory, std::string(977, 'x')).isLost);
}

void RingTests::countsMayWrap()
{
    const Memory memory(16);
    memory->reserved = 0xFFFFFFF0'FFFFFFFA;
    memory->released = 0xFFFFFFFA;
    Consumer consumer(*memory);
    ring::Taken taken;
    for (std::uint64_t i = 0; i < 40; ++i) {
        putText(*memory, std::string(100, static_cast<char>(i)));
        QCOMPARE(consumer.take(taken, false), Consumer::Step::Record);
        QCOMPARE(taken.crossing, 0xFFFFFFF0 + i);
        QCOMPARE(taken.lost, std::uint64_t{0});
        QCOMPARE(taken.payload, std::string(100, static_cast<char>(i)));
    }
}

void RingTests::lossesAreCounted()
{
    const Memory memory(16);
    Consumer consumer(*memory);
    for (int i = 0; i < 20; ++i) // one cell each
        QCOMPARE(putText(*memory, "x").isLost, i >= 16);
    ring::Taken taken;
    for (int i = 0; i < 16; ++i)
        QCOMPARE(consumer.take(taken, false), Consumer::Step::Record);
    QCOMPARE(consumer.take(taken, false), Consumer::Step::Empty);
    QCOMPARE(consumer.lostAtEnd(), std::uint64_t{4});
    QVERIFY(!putText(*memory, "y").isLost);
    QCOMPARE(consumer.take(taken, false), Consumer::Step::Record);
    QCOMPARE(taken.lost, std::uint64_t{4});
    QCOMPARE(taken.crossing, std::uint64_t{20});
    QCOMPARE(consumer.lostAtEnd(), std::uint64_t{0});
}

void RingTests::reportsLeaveAnEighth()
{
    const Memory memory(16);
    for (int i = 0; i < 16; ++i)
        QCOMPARE(putText(*memory, "x", false).isLost, i >= 14);
    QVERIFY(!putText(*memory, "y", true).isLost);
    QVERIFY(!putText(*memory, "y", true).isLost);
    QVERIFY(putText(*memory, "y", true).isLost);
}

void RingTests::aHoleIsWaitedForWhileItsOwnerLives()
{
    const Memory memory(16);
    Consumer consumer(*memory);
    leaveHole(*memory, 2);
    putText(*memory, "behind");
    ring::Taken taken;
    QCOMPARE(consumer.take(taken, false), Consumer::Step::Hole);
    QCOMPARE(consumer.take(taken, false), Consumer::Step::Hole);
    auto *late = reinterpret_cast<ring::RecordHead *>(ring::cellsAt(&*memory));
    late->length = 3;
    late->commit = memory->key ^ 0; // cell 0, crossing 0
    QCOMPARE(consumer.take(taken, false), Consumer::Step::Record);
    QCOMPARE(taken.payload.size(), std::size_t{3});
}

void RingTests::aHoleIsALossOnceItsOwnerIsDead()
{
    const Memory memory(16);
    Consumer consumer(*memory);
    putText(*memory, "before");
    leaveHole(*memory, 3);
    leaveHole(*memory, 1);
    putText(*memory, "behind");
    leaveHole(*memory, 1);
    ring::Taken taken;
    QCOMPARE(consumer.take(taken, true), Consumer::Step::Record);
    QCOMPARE(consumer.take(taken, true), Consumer::Step::Record);
    QCOMPARE(taken.payload, std::string("behind"));
    QCOMPARE(taken.lost, std::uint64_t{2});
    QCOMPARE(taken.crossing, std::uint64_t{3});
    QCOMPARE(consumer.take(taken, true), Consumer::Step::Empty);
    QCOMPARE(consumer.lostAtEnd(), std::uint64_t{1});
}

void RingTests::threadsTakeNothingFromEachOther()
{
    constexpr int threadCount = 8;
    constexpr std::uint32_t recordsEach = 5000;
    const Memory memory(256);
    Consumer consumer(*memory);
    std::atomic<int> running{threadCount};
    std::atomic<std::uint64_t> lost{0};
    std::vector<std::thread> threads;
    for (int id = 0; id < threadCount; ++id) {
        threads.emplace_back([&, id] {
            for (std::uint32_t i = 0; i < recordsEach; ++i) {
                const std::string text(i % 150, static_cast<char>('a' + id));
                ring::Crossing crossing;
                crossing.board = id;
                crossing.link = i;
                const ring::Piece piece{text.data(), text.size()};
                if (ring::put(*memory, crossing, &piece, 1).isLost) {
                    ++lost;
                    std::this_thread::yield(); // to the consumer
                }
            }
            --running;
        });
    }
    std::map<int, std::int64_t> last;
    std::uint64_t taken = 0;
    std::uint64_t lostBetween = 0;
    ring::Taken record;
    for (bool isDone = false; !isDone;) {
        isDone = running == 0;
        while (consumer.take(record, false) == Consumer::Step::Record) {
            ++taken;
            lostBetween += record.lost;
            QCOMPARE(record.payload, std::string(record.link % 150, static_cast<char>('a' + record.board)));
            QVERIFY(record.link > last.emplace(record.board, -1).first->second);
            last[record.board] = record.link;
        }
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(lostBetween + consumer.lostAtEnd(), lost.load());
    QCOMPARE(taken + lost, std::uint64_t{threadCount * recordsEach});
    QVERIFY(taken >= 256 / 4);
}

/// Of an owner that is dead and has left anything: the end is reached.
void RingTests::anyBytesInTheRing()
{
    const Memory memory(1024);
    Consumer consumer(*memory);
    unsigned char *bytes = ring::cellsAt(&*memory);
    std::srand(7);
    for (std::size_t i = 0; i < 1024 * ring::cellSize; ++i)
        bytes[i] = static_cast<unsigned char>(std::rand());
    // Commit words that fit, with a length of anything behind them.
    for (std::uint32_t cell = 0; cell < 1024; cell += 3)
        reinterpret_cast<ring::RecordHead *>(bytes + cell * ring::cellSize)->commit =
            memory->key ^ (std::uint64_t{cell} << 32 | cell);
    memory->reserved = std::uint64_t{1024} << 32 | 1024;
    ring::Taken record;
    int steps = 0;
    while (consumer.take(record, true) == Consumer::Step::Record)
        ++steps;
    QCOMPARE(consumer.take(record, true), Consumer::Step::Empty);
    QVERIFY(steps < 1024);
}

void RingTests::boardsAreCounted()
{
    const Memory memory(16);
    ring::countReport(*memory, 1001, false);
    ring::countReport(*memory, 1001, true);
    ring::countReport(*memory, 1001 + 1023, false); // the same slot, were it free
    ring::countReport(*memory, 0, false);
    QCOMPARE(ring::slotOf(*memory, 1001).delivered.load(), std::uint64_t{2});
    QCOMPARE(ring::slotOf(*memory, 1001).lost.load(), std::uint64_t{1});
    QCOMPARE(ring::slotOf(*memory, 1001 + 1023).delivered.load(), std::uint64_t{1});
    QCOMPARE(ring::slotOf(*memory, 0).delivered.load(), std::uint64_t{1});
    for (int i = 0; i < 2000; ++i)
        ring::countReport(*memory, -i - 1, false);
    QCOMPARE(memory->boards[1023].delivered.load(), std::uint64_t{2000 - 1020}); // three slots were taken
}

/// All of these would have the first slot.
void RingTests::fewSlotsAreLookedAtForABoard()
{
    const Memory memory(16);
    for (int i = 0; i < 17; ++i)
        ring::countReport(*memory, 1023 * i, false);
    QCOMPARE(ring::slotOf(*memory, 1023 * 15).delivered.load(), std::uint64_t{1});
    QCOMPARE(memory->boards[1023].delivered.load(), std::uint64_t{1});
    QCOMPARE(memory->boards[1023].key.load(), std::uint64_t{0});
}

PADSCOPE_TESTS(RingTests);
#include "tst_ring.moc"
