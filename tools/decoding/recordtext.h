#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "recordreader.h"

namespace decoding {

/// A packet in one line, as a reader wants to see it:
/// \code
/// Raw 0:   -12   60:  1034 ...      a report's row
/// orvexSendCommand(1001, "?\r")     a call
/// orvexSendCommand() = 0            its return
/// \endcode
std::string textOf(const capture::Record &record);

/// The same of a call or a return, without the count of what was lost before it.
std::string callTextOf(const capture::Record &record);

/// "SignalReport"; null when the type is unknown, or the packet no report.
const char *reportNameOf(const capture::Record &record);

/// The name of a report's type, or "unknown".
std::string_view reportTypeOf(const capture::Record &report);

/// All that reportTypeOf() gives.
std::vector<std::string> reportTypes();

/// A board's id, or "-".
std::string boardOf(const capture::Record &record);

} // namespace decoding
