#pragma once

#include "kinds.h"
#include "layouts.h"
#include "sensor.h"

#include <string_view>
#include <vector>

using Report = std::vector<unsigned char>;

/// The report of this kind that tells what was measured.
/// \param kind up to Kind::Adc
Report encode(Kind kind, const Measurement &measurement);

/// A report with text from byte 2 on; byte 0 is its length, 255 for one that is longer.
/// \param type reports::TextReport or reports::TextOrAdcReport
Report textReport(reports::Type type, std::string_view text);
