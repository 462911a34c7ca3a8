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
#include <variant>
#include <vector>

inline constexpr int initialRate = 100;
inline constexpr int maxRate = 10000;
inline constexpr int maxTotalRate = 20000;
inline constexpr std::size_t maxBoards = 32;

/// So many reports at once, of a kind or as they would have come.
struct Burst
{
    int reports;
    std::optional<Kind> kind{};
};
/// Nothing for so long.
struct Pause
{
    std::chrono::nanoseconds duration;
};
/// A report of these bytes.
struct Raw
{
    Report bytes;
};
/// From now on so many reports a second, for 0 as many as planned.
struct Rate
{
    int perSecond;
};
/// The first half of a report, and the board is gone.
struct Vanish
{
};

/// Something that happens to one board, in the board's own time.
struct BoardEvent
{
    std::chrono::nanoseconds at{0};
    std::variant<Burst, Pause, Raw, Rate, Vanish> what;
};

/// All that makes a board's reports what they are: two boards of the same plan send the same.
struct BoardPlan
{
    int id;
    std::uint32_t seed;
    int rate = initialRate; ///< reports a second, 1 to `maxRate`
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
