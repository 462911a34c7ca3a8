#pragma once

#include <cstdint>
#include <string>

#include "layout.h"

namespace ring {

/// A record, copied out of the ring.
struct Taken
{
    std::uint64_t crossing = 0; ///< from 0, without the wrap of the ring's own count
    std::uint64_t lost = 0;     ///< crossings between the last record and this one
    std::uint64_t clockNs = 0;
    std::uint32_t originalLength = 0;
    std::uint8_t kind = 0;
    std::uint8_t flags = 0;
    std::uint16_t call = 0;
    std::int32_t board = 0;
    std::int32_t result = 0;
    std::uint32_t thread = 0;
    std::uint32_t link = 0;
    bool isCallLost = false;
    std::string payload;
};

/// The one reader of a ring, on one thread. It trusts nothing in the memory that others write to.
class Consumer
{
public:
    enum class Step
    {
        Record,
        Empty,
        Hole, ///< reserved, and not committed yet
    };

    /// Takes what crosses from now on. To be made before the owner is.
    explicit Consumer(Control &shared);

    /// Takes the next record out of the ring.
    /// \param isOwnerDead nobody will commit what is reserved: holes are passed by, and are losses
    Step take(Taken &record, bool isOwnerDead);

    /// Crossings that were lost since the last record, as far as it is known now. Exact when the owner is
    /// dead.
    std::uint64_t lostAtEnd() const;

private:
    bool isCommitted(std::uint32_t cell, std::uint32_t &crossing, std::uint64_t reserved) const;
    bool isAbandoned() const;
    bool copy(std::uint32_t crossing, std::uint64_t reserved, Taken &record);
    void copyBytes(std::uint32_t cell, std::size_t length, std::string &into) const;

    Control &control;
    std::uint32_t cellCount; ///< read once
    std::uint64_t key;
    std::uint32_t cell;
    std::uint64_t nextCrossing;
};

} // namespace ring
