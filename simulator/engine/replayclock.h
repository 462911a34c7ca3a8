#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

/// Where a replay is: a time of the capture and one of the steady clock that go together, and the rate. One
/// thread at a time.
class ReplayClock
{
public:
    using Steady = std::chrono::steady_clock;

    explicit ReplayClock(double rate_)
        : perSecond(rate_)
    {
    }

    /// Time is at this place of the capture now, and runs on.
    void run(std::int64_t positionNs, Steady::time_point now) { pair = Pair{positionNs, now}; }
    /// Time is at this place of the capture, and stands still.
    void stand(std::int64_t positionNs)
    {
        pair.reset();
        position = positionNs;
    }
    bool isRunning() const { return pair.has_value(); }

    double rate() const { return perSecond; } ///< 0: as fast as possible
    /// \pre time stands still
    void setRate(double rate_) { perSecond = rate_; }

    std::int64_t positionAt(Steady::time_point now) const;
    /// \pre time runs
    Steady::time_point dueTime(std::int64_t positionNs) const;

private:
    struct Pair
    {
        std::int64_t positionNs;
        Steady::time_point time;
    };

    double perSecond;
    std::optional<Pair> pair; ///< nothing while time stands still
    std::int64_t position = 0;
};
