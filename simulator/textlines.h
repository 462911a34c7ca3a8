#pragma once

#include "simulator/sensor.h"

#include <string>

/// The line of text from which the bar graph takes its signals: 74 characters that end in "!". Twelve
/// hexadecimal words (fine x, fine y, coarse x, coarse y, three components each), a line feed, the proximity
/// character right behind it and the frequency as a hexadecimal word at index 67:
/// \code
/// 0bb8 05dc fa24 0000 0001 ffff *0000 0000 0000 0000 0000 0000\r\nO F: 07d0  !
/// \endcode
std::string signalLine(const Measurement &measurement);

/// Any other text of the board. It ends in "!" as well and never has 74 characters, so that the bar graph
/// drops it and begins its next line behind it; it has no line feed, so that the Monitor shows it whatever
/// came shortly before.
/// \param text should hold no "!"
std::string plainLine(const std::string &text);

/// What a board tells of itself in its text reports of type 119. Such a report never has one of the lengths
/// by which the bar graph knows a voltage.
std::string statusLine(const Measurement &measurement);
