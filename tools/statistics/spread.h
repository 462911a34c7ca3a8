#pragma once

#include <cstdint>
#include <vector>

#include "statistics.h"

namespace statistics {

/// Changes the order of the durations.
Spread spreadOf(std::vector<std::int64_t> &durationsNs);

/// Replaces each duration by its absolute difference from another.
void subtract(std::vector<std::int64_t> &durationsNs, std::int64_t otherNs);

} // namespace statistics
