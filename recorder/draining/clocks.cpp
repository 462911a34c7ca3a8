#include "clocks.h"

#include <ctime>

namespace recorder {

namespace {

constexpr int maxAttempts = 10;
constexpr std::uint64_t nearNs = 10'000;

std::uint64_t nanoseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(time.tv_nsec);
}

struct Reading
{
    std::uint64_t monotonicNs;
    std::uint64_t realNs;
    std::uint64_t bootNs;
    std::uint64_t durationNs;
};

Reading readClocks()
{
    Reading reading{};
    reading.monotonicNs = nanoseconds(CLOCK_MONOTONIC);
    reading.realNs = nanoseconds(CLOCK_REALTIME);
    reading.bootNs = nanoseconds(CLOCK_BOOTTIME);
    reading.durationNs = nanoseconds(CLOCK_MONOTONIC) - reading.monotonicNs;
    return reading;
}

} // namespace

Clocks Clocks::now()
{
    // An interruption between two of them would shift all wall clock times that go by them.
    Reading best = readClocks();
    for (int i = 1; i < maxAttempts && best.durationNs > nearNs; ++i) {
        const Reading next = readClocks();
        if (next.durationNs < best.durationNs)
            best = next;
    }
    const auto seconds = static_cast<std::time_t>(best.realNs / 1'000'000'000);
    std::tm local{};
    localtime_r(&seconds, &local);
    return {best.monotonicNs, best.realNs, best.bootNs, static_cast<std::int32_t>(local.tm_gmtoff)};
}

Clocks Clocks::at(std::uint64_t otherNs) const
{
    const std::uint64_t distance = otherNs - monotonicNs;
    return {otherNs, realNs + distance, bootNs + distance, localOffsetSeconds};
}

} // namespace recorder
