#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

inline constexpr double minReplayRate = 0.1;
inline constexpr double maxReplayRate = 100;
inline constexpr double unlimitedReplayRate = 0; ///< as fast as possible
inline constexpr std::int64_t maxReplayRounds = 1'000'000;
inline constexpr double maxReplaySeconds = 1e9; ///< 31 years

/// What a scenario says of the capture that is played. Times count from the session's first packet.
struct ReplayPlan
{
    std::string capture; ///< path
    double rate = 1;     ///< `minReplayRate` to `maxReplayRate`, or `unlimitedReplayRate`
    unsigned rounds = 1; ///< 0: without end
    std::chrono::nanoseconds from{0};
    std::optional<std::chrono::nanoseconds> to{};       ///< what comes later is not played
    std::optional<std::chrono::nanoseconds> skipGaps{}; ///< longer pauses are shortened to this
    bool paused = false;                                ///< at first
    bool lockstep = false;                              ///< waits for the host at each recorded command
    std::optional<std::uint32_t> session{};
};
