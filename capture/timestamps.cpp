#include "timestamps.h"

namespace capture::pcapng {

namespace {

constexpr std::uint64_t nsPerSecond = 1'000'000'000;

std::uint64_t fromPowerOfTen(std::uint64_t units, unsigned exponent)
{
    for (; exponent < 9; ++exponent)
        units *= 10;
    for (; exponent > 9 && units > 0; --exponent)
        units /= 10;
    return units;
}

std::uint64_t fromPowerOfTwo(std::uint64_t units, unsigned exponent)
{
    if (exponent >= 64)
        return 0;
    const std::uint64_t seconds = units >> exponent;
    std::uint64_t fraction = units - (seconds << exponent);
    // So that a thousand million of it fit in 64 bits.
    for (; exponent > 32; --exponent)
        fraction >>= 1;
    return seconds * nsPerSecond + ((fraction * nsPerSecond) >> exponent);
}

} // namespace

std::uint64_t nanosecondsOf(std::uint64_t units, std::uint8_t resolution, std::int64_t offsetSeconds)
{
    const unsigned exponent = resolution & 0x7FU;
    const bool isPowerOfTwo = (resolution & 0x80U) != 0;
    const std::uint64_t ns = isPowerOfTwo ? fromPowerOfTwo(units, exponent) : fromPowerOfTen(units, exponent);
    return ns + static_cast<std::uint64_t>(offsetSeconds) * nsPerSecond;
}

} // namespace capture::pcapng
