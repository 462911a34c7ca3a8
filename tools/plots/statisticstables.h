#pragma once

#include "html.h"
#include "statistics.h"

namespace plots {

/// Rates, gaps, jitter, fields and durations of calls, a table each.
void writeStatistics(Html &html, const statistics::SessionStatistics &session);

} // namespace plots
