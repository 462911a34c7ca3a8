#pragma once

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string_view>

/// The kinds of report that a board streams.
enum class Kind
{
    // In the order of reports::layouts.
    Signal1,
    Signal2,
    Signal3,
    Signal4,
    Signal5,
    Signal6,
    Phase,
    PenIdentity,
    DualPen,
    Position,
    Adc,
    // Made elsewhere.
    StatusText,    ///< text of type 119
    Garbage,       ///< random bytes, each length from 0 to 64 in turn
    AllTypes,      ///< each type byte from 0 to 255 in turn
    EndlessText,   ///< type 50, with neither a line feed nor an exclamation mark
    LongText,      ///< a line of 10,000 characters
    MarkupText,    ///< a line of markup
    EveryByteText, ///< a line of all byte values
};
inline constexpr int layoutKindCount = 11;
inline constexpr int kindCount = 18;

/// By kind, as scenarios name them.
inline constexpr std::string_view kindNames[] = {
    "signal-1", "signal-2",     "signal-3",     "signal-4",  "signal-5",    "signal-6",
    "phase",    "pen-identity", "dual-pen",     "position",  "adc",         "status-text",
    "garbage",  "all-types",    "text-endless", "text-long", "text-markup", "text-every-byte",
};
static_assert(std::size(kindNames) == kindCount, "a name for each kind");

/// How many reports of each kind a board sends in a round; the round is shuffled.
using Weights = std::array<int, kindCount>;
inline constexpr int maxWeight = 100;

// In a regular order the kinds would beat with the tool's rate limit, and some would never be shown. The bar
// graph lives on the first of them. None that it takes for a voltage: one turns it into a meter for good.
inline constexpr Weights usualWeights{5, 2, 2, 2, 3, 2, 2, 2, 2, 2};

inline std::optional<Kind> kindNamed(std::string_view name)
{
    const auto match = std::find(std::begin(kindNames), std::end(kindNames), name);
    return match == std::end(kindNames) ? std::nullopt
                                        : std::optional(static_cast<Kind>(match - std::begin(kindNames)));
}
