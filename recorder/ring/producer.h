#pragma once

#include <cstddef>
#include <cstdint>

#include "layout.h"

namespace ring {

/// Bytes of a payload, which may lie in several places.
struct Piece
{
    const void *data;
    std::size_t length;
};

/// What is told of a crossing besides its payload. See RecordHead.
struct Crossing
{
    std::uint8_t kind = 0;
    std::uint8_t flags = 0;
    std::uint16_t call = 0;
    std::int32_t board = 0;
    std::int32_t result = 0;
    std::uint32_t thread = 0;
    std::uint32_t link = 0;
    std::uint32_t originalLength = 0;
    bool isCallLost = false;
    bool mayUseReserve = true; ///< false leaves the last eighth of the ring to others
};

struct Put
{
    std::uint32_t crossing; ///< its number
    bool isLost;            ///< there was no room
};

/// Writes a record, or counts it as lost. Any thread, any number at once; takes no lock, makes no system
/// call, allocates nothing.
Put put(Control &control, const Crossing &crossing, const Piece *pieces, std::size_t count);

/// Counts a report that was delivered. Any thread.
void countReport(Control &control, std::int32_t board, bool isLost);

/// The slot of a board, taken if it has none yet.
BoardSlot &slotOf(Control &control, std::int32_t board);

} // namespace ring
