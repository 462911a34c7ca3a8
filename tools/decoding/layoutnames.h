#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "recordreader.h"

namespace decoding {

/// What the names of a report's fields begin with: "signal1", "penIdentity", "text"; empty for one that is
/// shown as raw bytes.
std::string_view layoutNameOf(const capture::Record &report);

/// All that layoutNameOf() gives.
std::vector<std::string> layoutNames();

} // namespace decoding
