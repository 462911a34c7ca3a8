#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "recordreader.h"

namespace decoding {

/// What the names of a report's fields begin with: "signal1", "penIdentity", "text"; empty for one that is
/// shown as raw bytes.
std::string_view layoutNameOf(const capture::Record &report);

/// All names by which reports are chosen: of types, of layouts, and "unknown".
std::vector<std::string> typeNames();

/// \param name one of these
bool isOfType(const capture::Record &report, std::string_view name);

} // namespace decoding
