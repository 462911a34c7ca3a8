#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>

/// How well a replay kept its times. One thread at a time.
class ReplayTiming
{
public:
    using Steady = std::chrono::steady_clock;

    /// Something was played.
    void played(std::int64_t positionNs, Steady::time_point now);
    /// Time does not run on from what was played last: a pause, another place, or a wait for the host.
    void interrupt();
    /// The achieved rate counts from here.
    void beginRate();
    /// Time of the capture over the time that it took; 0 when it is not known.
    double achievedRate() const;

    /// A report was delivered so much later than it was due.
    void addError(std::chrono::nanoseconds error);
    bool hasErrors() const { return count > 0; }
    /// The error that so many of 1000 reports did not exceed, at most 1 % too high; 0 without a report.
    std::chrono::nanoseconds errorOf(unsigned perMille) const;
    std::chrono::nanoseconds maxError() const { return max; }

private:
    struct Moment
    {
        std::int64_t positionNs;
        Steady::time_point time;
    };
    static constexpr unsigned stepsPerOctave = 128;
    static constexpr unsigned octaves = 40;

    static std::size_t binOf(std::uint64_t ns);
    static std::uint64_t maxOf(std::size_t bin);

    std::optional<Moment> begin; ///< of what was played without an interruption
    Moment last{};
    double capturedNs = 0; ///< before that
    double tookNs = 0;
    std::array<std::uint64_t, octaves * stepsPerOctave> bins{};
    std::uint64_t count = 0;
    std::chrono::nanoseconds max{0};
};
