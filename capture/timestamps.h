#pragma once

#include <cstdint>

namespace capture::pcapng {

/// A time of a packet in nanoseconds since 1970-01-01 UTC. What lies outside 64 bits is cut.
/// \param resolution as the format has it: units of 10^-n s, or of 2^-n s with the highest bit set
/// \param offsetSeconds added to the time
std::uint64_t nanosecondsOf(std::uint64_t units, std::uint8_t resolution, std::int64_t offsetSeconds);

} // namespace capture::pcapng
