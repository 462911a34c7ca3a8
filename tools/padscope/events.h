#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "recordreader.h"

/// What `padscope record --on` waits for.
namespace padscope {

using IsEvent = std::function<bool(const capture::Header &header, capture::ByteView payload)>;

/// "mark", "signal", "call:" with an entry point, "type:" with a type of reports.
CLI::Validator eventName();

/// Whether a packet is one of these events.
/// \param names each of which the validator takes
IsEvent isAnyOf(const std::vector<std::string> &names);

} // namespace padscope
