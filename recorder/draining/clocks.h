#pragma once

#include <cstdint>

namespace recorder {

/// The clocks at one moment.
struct Clocks
{
    std::uint64_t monotonicNs = 0;
    std::uint64_t realNs = 0; ///< since 1970-01-01 UTC
    std::uint64_t bootNs = 0;
    std::int32_t localOffsetSeconds = 0;

    /// Read within a few microseconds, or as near to each other as a busy machine lets them be.
    static Clocks now();
    /// What they show at another moment of the monotonic one, if nobody sets them between.
    Clocks at(std::uint64_t otherNs) const;
};

} // namespace recorder
