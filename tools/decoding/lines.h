#pragma once

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace decoding {

inline constexpr std::uint64_t noLimit = std::numeric_limits<std::uint64_t>::max();

/// Lines on their way to a file, up to a limit.
struct Lines
{
    std::string text;
    std::uint64_t left = noLimit; ///< how many more there may be
};

/// Appends an integer in decimal.
template <typename Integer>
void appendDecimal(std::string &text, Integer value)
{
    char digits[24];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

} // namespace decoding
