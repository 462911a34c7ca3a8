#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "layouts.h"

/// The kinds of report that a board streams.
enum class Kind
{
    // One for each layout, in the order of reports::layouts; the last ones may have no name here.
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
    // Made in stream.cpp and oddreports.h.
    StatusText = std::size(reports::layouts), ///< text of type 119
    Garbage,                                  ///< random bytes, each length from 0 to 64 in turn
    AllTypes,                                 ///< each type byte from 0 to 255 in turn
    EndlessText,                              ///< type 50, with neither a line feed nor an exclamation mark
    LongText,                                 ///< a line of 10,000 characters
    MarkupText,                               ///< a line of markup
    EveryByteText,                            ///< a line of all byte values
};
inline constexpr int kindCount = static_cast<int>(Kind::EveryByteText) + 1;

/// By kind, as scenarios name them.
inline constexpr auto kindNames = [] {
    std::array<std::string_view, kindCount> names{};
    std::size_t kind = 0;
    for (const reports::Layout *layout : reports::layouts)
        names[kind++] = layout->name;
    for (const char *name : {"status-text", "garbage", "all-types", "text-endless", "text-long",
                             "text-markup", "text-every-byte"})
        names[kind++] = name;
    return names;
}();
static_assert(!kindNames.back().empty(), "a name for each kind");

/// How many reports of each kind a board sends in a round; the round is shuffled. In a regular order the
/// kinds would beat with the tool's rate limit, and some would never be shown.
using Weights = std::array<int, kindCount>;
inline constexpr int maxWeight = 100;
extern const Weights usualWeights;

inline std::optional<Kind> kindNamed(std::string_view name)
{
    const auto match = std::find(std::begin(kindNames), std::end(kindNames), name);
    return match == std::end(kindNames) ? std::nullopt
                                        : std::optional(static_cast<Kind>(match - std::begin(kindNames)));
}
