#pragma once

#include <optional>
#include <string>
#include <vector>

#include "scenario.h"

inline constexpr char captureExtension[] = ".pcapng";

/// Reads a scenario file, all of it or nothing; scenarios/schema.json tells what may stand in one. A file
/// whose name ends in ".pcapng" is a capture, and the scenario its replay. Throws nothing but std::bad_alloc.
/// \param error on failure one line without a line feed: file, place, what is wrong and what is allowed
std::optional<Scenario> readScenario(const std::string &path, std::string &error);

// The scenarios that are shipped with the library: the folder `scenarios` beside it, or beside the folder
// that it is in.

/// Names without ".json", in order; none when there is no such folder.
std::vector<std::string> scenarioNames();

/// The file of a scenario; empty when none of this name is shipped.
/// \param nameOrPath a path holds a '/' or ends in ".json" or ".pcapng"; anything else is a name
std::string scenarioFile(const std::string &nameOrPath);
