#include "consumer.h"

#include <algorithm>
#include <new>

namespace ring {

Consumer::Consumer(Control &shared)
    : control(shared)
    , cellCount(shared.cellCount)
    , key(shared.key)
    , cell(cellsOf(shared.reserved))
    , nextCrossing(crossingsOf(shared.reserved))
{
}

Consumer::Step Consumer::take(Taken &record, bool isOwnerDead)
{
    for (;;) {
        const std::uint64_t reserved = control.reserved.load(std::memory_order_acquire);
        if (cell == cellsOf(reserved))
            return Step::Empty;
        std::uint32_t crossing = 0;
        if (isCommitted(cell, crossing, reserved) && copy(crossing, reserved, record))
            return Step::Record;
        if (!isOwnerDead && !isAbandoned())
            return Step::Hole;
        // Cell by cell to the next word that fits.
        control.released.store(++cell, std::memory_order_release);
    }
}

bool Consumer::isCommitted(std::uint32_t at, std::uint32_t &crossing, std::uint64_t reserved) const
{
    unsigned char *bytes = cellsAt(&control) + cellSize * (at % cellCount);
    const auto *head = std::launder(reinterpret_cast<const RecordHead *>(bytes));
    const std::uint64_t word = head->commit.load(std::memory_order_acquire) ^ key;
    crossing = crossingsOf(word);
    const auto next = static_cast<std::uint32_t>(nextCrossing);
    return cellsOf(word) == at && crossing - next < crossingsOf(reserved) - next;
}

/// Whether nobody is left who would commit what begins here.
bool Consumer::isAbandoned() const
{
    std::uint64_t word = control.abandoned.load(std::memory_order_acquire);
    if (word == 0)
        return false;
    const std::uint32_t left = cellsOf(word) - cell;
    if (left > 0 && left <= cellCount)
        return true;
    control.abandoned.compare_exchange_strong(word, 0); // it would fit again once the cells have wrapped
    return false;
}

bool Consumer::copy(std::uint32_t crossing, std::uint64_t reserved, Taken &record)
{
    unsigned char *bytes = cellsAt(&control) + cellSize * (cell % cellCount);
    const auto *head = std::launder(reinterpret_cast<const RecordHead *>(bytes));
    const std::uint32_t length = head->length.load(std::memory_order_relaxed);
    const std::uint32_t cells = cellsFor(length);
    const std::uint32_t inUse = cellsOf(reserved) - cell;
    if (length > cellSize * cellCount || cells > std::min(inUse, cellCount))
        return false;
    record.lost = crossing - static_cast<std::uint32_t>(nextCrossing);
    record.crossing = nextCrossing + record.lost;
    record.clockNs = head->clockNs;
    record.originalLength = std::max(head->originalLength, length);
    record.kind = head->kind;
    record.flags = head->flags;
    record.call = head->call;
    record.board = head->board;
    record.result = head->result;
    record.thread = head->thread;
    record.link = head->link;
    record.isCallLost = head->isCallLost != 0;
    copyBytes(cell, length, record.payload);
    cell += cells;
    nextCrossing = record.crossing + 1;
    control.released.store(cell, std::memory_order_release);
    return true;
}

void Consumer::copyBytes(std::uint32_t at, std::size_t length, std::string &into) const
{
    const auto *bytes = reinterpret_cast<const char *>(cellsAt(&control));
    const std::size_t size = cellSize * cellCount;
    const std::size_t first = (cellSize * (at % cellCount) + sizeof(RecordHead)) % size;
    const std::size_t untilEnd = std::min(length, size - first);
    into.assign(bytes + first, untilEnd);
    into.append(bytes, length - untilEnd);
}

std::uint64_t Consumer::lostAtEnd() const
{
    const std::uint64_t reserved = control.reserved.load(std::memory_order_acquire);
    return crossingsOf(reserved) - static_cast<std::uint32_t>(nextCrossing);
}

} // namespace ring
