#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kinds.h"
#include "layouts.h"
#include "sensor.h"

using Report = std::vector<unsigned char>;

/// The report of this kind that tells what was measured.
/// \param kind below Kind::StatusText
Report encode(Kind kind, const Measurement &measurement);

/// A report with text from byte 2 on; byte 0 is its length, 255 for one that is longer.
/// \param type reports::TextReport or reports::TextOrAdcReport
Report textReport(reports::Type type, std::string_view text);

/// The line of text from which the bar graph takes its signals.
std::string signalLine(const Measurement &measurement);

/// Any other text of the board. It ends in "!" as well and never has 74 characters, so that the bar graph
/// drops it and begins its next line behind it; it has no line feed, so that the Monitor shows it whatever
/// came shortly before.
/// \param text should hold no "!"
std::string plainLine(const std::string &text);

/// What a board tells of itself in its text reports of type 119.
std::string statusLine(const Measurement &measurement);
