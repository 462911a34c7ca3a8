#pragma once

#include "monitor/reportformats.h"
#include "simulator/random.h"
#include "simulator/sensor.h"

#include <string_view>
#include <vector>

using Report = std::vector<unsigned char>;

/// The kinds of report that a board streams, in the order of reports::layouts.
enum class Kind
{
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
};
inline constexpr int kindCount = 11;

/// The report of this kind that tells what was measured.
Report encode(Kind kind, const Measurement &measurement);

/// A report with text from byte 2 on; byte 0 is its length, 255 for one that is longer.
/// \param type reports::TextReport or reports::TextOrAdcReport
Report textReport(reports::Type type, std::string_view text);

/// A report of a type that the tool has no layout for: 6 to 20 bytes.
Report unknownReport(Random &random);
