#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace reports {

/// What a line of text carries for the bar graph: 74 characters that end in "!". Twelve hexadecimal words
/// (fine x, fine y, coarse x, coarse y, three components each), a line feed, the proximity character right
/// behind it, and the frequency as a hexadecimal word at index 67:
/// \code
/// 0bb8 05dc fa24 0000 0001 ffff *0000 0000 0000 0000 0000 0000\r\nO F: 07d0  !
/// \endcode
struct SignalLine
{
    std::int16_t components[12] = {};
    char proximity = 0;
    std::int16_t frequencyRaw = 0;
};

inline constexpr std::size_t signalLineLength = 74;
inline constexpr char signalLineEnd = '!';

/// Takes the values of a line of 74 characters. Those that a malformed line does not reach stay as they are.
void readSignalLine(const std::string &line, SignalLine &values);

std::string writeSignalLine(const SignalLine &values);

} // namespace reports
