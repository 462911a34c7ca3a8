#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

/// The memory that the tap shares with the recorder: a control block, and a ring of cells behind it.
///
/// A record takes consecutive cells; one that reaches the end of the ring goes on at its beginning. Cells and
/// crossings are counted modulo 2^32.
namespace ring {

inline constexpr std::size_t cellSize = 64;
inline constexpr std::uint64_t magic = 0x31676e6952646150; ///< "PadRing1"
inline constexpr std::uint32_t boardSlotCount = 1024;

/// What the tap counts of one board.
struct BoardSlot
{
    std::atomic<std::uint64_t> key; ///< 0 is free; otherwise the id's 32 bits and `boardSlotUsed`
    std::atomic<std::uint64_t> delivered;
    std::atomic<std::uint64_t> lost;
};
inline constexpr std::uint64_t boardSlotUsed = std::uint64_t{1} << 32;
inline constexpr std::uint64_t abandonedMark = std::uint64_t{1} << 32;

struct Control
{
    std::uint64_t magic;
    std::uint64_t key;       ///< random, so that no bytes of a board's are taken for a commit word
    std::uint32_t cellCount; ///< a power of two, so that the count of cells may wrap
    std::uint32_t session;

    /// Low half: cells reserved. High half: crossings, those among them that were lost included.
    alignas(64) std::atomic<std::uint64_t> reserved;
    /// Cells that the recorder has given back.
    alignas(64) std::atomic<std::uint32_t> released;
    /// Process that records, by its number in the recorder's /proc: the first that opens the library. 0 is
    /// none so far.
    alignas(64) std::atomic<std::int32_t> owner;
    std::atomic<std::uint64_t> ownerImage; ///< random; another one once the owner has executed a file
    std::atomic<std::uint32_t> forwardingProcesses; ///< others, which only forward
    std::atomic<std::uint32_t> unrecordedCallbacks; ///< registered beyond the pool of trampolines
    std::atomic<std::uint32_t> failedOpenings;      ///< the tap found no library that it could load
    /// Times that the owner unloaded the tap, and kept the library, which it had opened itself. What it looks
    /// up then passes the tap by.
    std::atomic<std::uint32_t> timesPassedBy;
    /// What a process that executed itself again has left: `abandonedMark` and the cells that were reserved.
    std::atomic<std::uint64_t> abandoned;

    BoardSlot boards[boardSlotCount]; ///< the last one counts the boards that have no slot, and has no key
};

/// Where the cells begin.
inline constexpr std::size_t cellsOffset = (sizeof(Control) + 4095) / 4096 * 4096;

/// The beginning of a record, in its first cell. The payload follows it.
struct RecordHead
{
    std::atomic<std::uint64_t> commit; ///< commitWord() when the record is whole
    std::uint64_t clockNs;             ///< of the monotonic clock
    std::atomic<std::uint32_t> length; ///< of the payload; to be read once, as a broken host may change it
    std::uint32_t originalLength;      ///< before it was cut
    std::uint8_t kind;
    std::uint8_t flags;
    std::uint16_t call;
    std::int32_t board;
    std::int32_t result;
    std::uint32_t thread;
    std::uint32_t link;       ///< of a return: the crossing of its call
    std::uint32_t isCallLost; ///< of a return: 1 when its call was lost
};
static_assert(sizeof(RecordHead) == 48);

static_assert(std::atomic<std::uint64_t>::is_always_lock_free, "two processes share it");

constexpr std::uint32_t cellsFor(std::size_t payloadLength)
{
    return static_cast<std::uint32_t>((sizeof(RecordHead) + payloadLength + cellSize - 1) / cellSize);
}

/// The word that only this cell in this lap of this recording can hold.
constexpr std::uint64_t commitWord(std::uint64_t key, std::uint32_t cell, std::uint32_t crossing)
{
    return key ^ (std::uint64_t{crossing} << 32 | cell);
}

constexpr std::uint32_t cellsOf(std::uint64_t reserved)
{
    return static_cast<std::uint32_t>(reserved);
}

constexpr std::uint32_t crossingsOf(std::uint64_t reserved)
{
    return static_cast<std::uint32_t>(reserved >> 32);
}

constexpr std::size_t sizeOf(std::uint32_t cellCount)
{
    return cellsOffset + cellSize * cellCount;
}

inline unsigned char *cellsAt(Control *control)
{
    return reinterpret_cast<unsigned char *>(control) + cellsOffset;
}

} // namespace ring
