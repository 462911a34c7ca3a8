#pragma once

#include "encoding.h"
#include "kinds.h"
#include "pen.h"
#include "sensor.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

inline constexpr int initialRate = 100;
inline constexpr int highestRate = 10000;
inline constexpr int highestTotalRate = 20000;
inline constexpr std::size_t mostBoards = 32;

/// Something that happens to one board, in the board's own time.
struct BoardEvent
{
    enum class What
    {
        Burst,  ///< `amount` reports at once, of `kind` or as they would have come
        Pause,  ///< nothing for `duration`
        Raw,    ///< `bytes` as a report
        Rate,   ///< from now on `amount` reports a second, for 0 as many as planned
        Vanish, ///< the first half of a report, and the board is gone
    };

    std::chrono::nanoseconds at{0};
    What what = What::Burst;
    int amount = 0;
    std::chrono::nanoseconds duration{0};
    std::optional<Kind> kind{};
    Report bytes{};
};

/// All that makes a board's reports what they are: two boards of the same plan send the same.
struct BoardPlan
{
    int id;
    std::uint32_t seed;
    int rate = initialRate; ///< reports a second, 1 to `highestRate`
    Weights weights = usualWeights;
    bool lines = true;    ///< a greeting, and the line of text for the bar graph about once a second
    bool unknowns = true; ///< a report of an unknown type every four seconds
    PenPath pen{};
    int adcMax = usualAdcMax;         ///< the highest voltage reading, `adcMin` to 1023
    std::vector<BoardEvent> events{}; ///< in the order of their times
    /// How many of the events have happened. Shared by all copies: when the board comes back, none happens
    /// again.
    std::shared_ptr<std::atomic<std::size_t>> happened = std::make_shared<std::atomic<std::size_t>>(0);
};
