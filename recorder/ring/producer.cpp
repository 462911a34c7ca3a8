#include "producer.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <new>

namespace ring {

namespace {

std::uint64_t monotonicNs()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(time.tv_nsec);
}

struct Place
{
    std::uint32_t cell;
    std::uint32_t crossing;
    bool isLost;
};

/// Number and place are one decision: one compare-and-swap moves both.
Place reserve(Control &control, std::uint32_t cells, std::uint32_t limit)
{
    std::uint64_t before = control.reserved.load(std::memory_order_relaxed);
    for (;;) {
        const std::uint32_t first = cellsOf(before);
        const std::uint32_t used = first - control.released.load(std::memory_order_acquire);
        const bool isLost = used > limit || cells > limit - used;
        const std::uint32_t next = isLost ? first : first + cells;
        const std::uint64_t after = std::uint64_t{crossingsOf(before) + 1} << 32 | next;
        if (control.reserved.compare_exchange_weak(before, after, std::memory_order_relaxed))
            return {first, crossingsOf(before), isLost};
    }
}

/// How many slots a driver thread looks at for a board.
constexpr std::uint32_t maxProbes = 16;

/// Copies into the ring, which goes on at its beginning.
class Writer
{
public:
    Writer(Control &control, std::uint32_t cell)
        : bytes(cellsAt(&control))
        , size(cellSize * control.cellCount)
        , index(cellSize * (cell % control.cellCount) + sizeof(RecordHead))
    {
    }

    void write(const Piece &piece)
    {
        const auto *from = static_cast<const unsigned char *>(piece.data);
        const std::size_t untilEnd = std::min(piece.length, size - index);
        std::memcpy(bytes + index, from, untilEnd);
        std::memcpy(bytes, from + untilEnd, piece.length - untilEnd);
        index = (index + piece.length) % size;
    }

private:
    unsigned char *bytes;
    std::size_t size;
    std::size_t index;
};

} // namespace

Put put(Control &control, const Crossing &crossing, const Piece *pieces, std::size_t count)
{
    // The clock first: a thread that is interrupted behind it has an old stamp itself, and does not push on
    // those of all others.
    const std::uint64_t clockNs = monotonicNs();
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i)
        length += pieces[i].length;
    const std::uint32_t spared = crossing.mayUseReserve ? 0 : control.cellCount / 8;
    const Place place = reserve(control, cellsFor(length), control.cellCount - spared);
    if (place.isLost)
        return {place.crossing, true};

    Writer writer(control, place.cell);
    for (std::size_t i = 0; i < count; ++i) {
        if (pieces[i].length > 0)
            writer.write(pieces[i]);
    }
    unsigned char *cell = cellsAt(&control) + cellSize * (place.cell % control.cellCount);
    auto *head = std::launder(reinterpret_cast<RecordHead *>(cell));
    head->clockNs = clockNs;
    const auto storedLength = static_cast<std::uint32_t>(length);
    head->length.store(storedLength, std::memory_order_relaxed);
    head->originalLength = std::max(crossing.originalLength, storedLength);
    head->kind = crossing.kind;
    head->flags = crossing.flags;
    head->call = crossing.call;
    head->board = crossing.board;
    head->result = crossing.result;
    head->thread = crossing.thread;
    head->link = crossing.link;
    head->isCallLost = crossing.isCallLost ? 1 : 0;
    head->commit.store(commitWord(control.key, place.cell, place.crossing), std::memory_order_release);
    return {place.crossing, false};
}

BoardSlot &slotOf(Control &control, std::int32_t board)
{
    const std::uint64_t key = boardSlotUsed | static_cast<std::uint32_t>(board);
    constexpr std::uint32_t last = boardSlotCount - 1;
    for (std::uint32_t i = 0; i < maxProbes; ++i) {
        BoardSlot &slot = control.boards[(static_cast<std::uint32_t>(board) + i) % last];
        std::uint64_t found = slot.key.load(std::memory_order_relaxed);
        if (found == 0 && slot.key.compare_exchange_strong(found, key, std::memory_order_relaxed))
            return slot;
        if (found == key)
            return slot;
    }
    return control.boards[last];
}

void countReport(Control &control, std::int32_t board, bool isLost)
{
    BoardSlot &slot = slotOf(control, board);
    if (isLost)
        slot.lost.fetch_add(1, std::memory_order_relaxed);
    slot.delivered.fetch_add(1, std::memory_order_relaxed);
}

} // namespace ring
