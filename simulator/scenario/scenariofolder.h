#pragma once

#include <string>
#include <vector>

// The scenarios that are shipped with the library: the folder `scenarios` beside it, or beside the folder
// that it is in.

/// Names without ".json", in order; none when there is no such folder.
std::vector<std::string> scenarioNames();

/// The file of a scenario; empty when none of this name is shipped.
/// \param nameOrPath a path holds a '/' or ends in ".json"; anything else is a name
std::string scenarioFile(const std::string &nameOrPath);
