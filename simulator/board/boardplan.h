#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "encoding.h"
#include "kinds.h"
#include "pen.h"
#include "sensor.h"

inline constexpr int maxRate = 10000;
inline constexpr int maxTotalRate = 20000;
inline constexpr std::size_t maxBoards = 32;

/// Reports at once.
struct Burst
{
    int reports;
    std::optional<Kind> kind{}; ///< nothing: as they would have come
};
struct Pause
{
    std::chrono::nanoseconds duration;
};
struct Raw
{
    Report bytes;
};
struct Rate
{
    int perSecond; ///< from now on; 0 as planned
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
    bool plugged = true; ///< at first
    int rate = 100;      ///< reports a second, 1 to `maxRate`
    Weights weights = usualWeights;
    bool lines = true;    ///< a greeting, and the line of text for the bar graph about once a second
    bool unknowns = true; ///< a report of an unknown type every four seconds
    PenPath pen{};
    int adcMax = usualAdcMax;         ///< the max voltage reading, `adcMin` to 1023
    std::vector<BoardEvent> events{}; ///< in the order of their times
    /// How many events have happened. Shared by all copies: when the board comes back, none happens again.
    std::shared_ptr<std::atomic<std::size_t>> happened = std::make_shared<std::atomic<std::size_t>>(0);
};
