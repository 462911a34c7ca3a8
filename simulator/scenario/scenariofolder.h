#pragma once

#include <string>
#include <vector>

/// The scenarios that are shipped with the library: the folder `scenarios` beside it, or beside the folder
/// that it is in.
namespace scenariofolder {

/// Names without ".json", in order; none when there is no such folder.
std::vector<std::string> names();

/// The file of a scenario.
/// \param nameOrPath a path holds a '/' or ends in ".json"; anything else is a name
/// \return empty when none of this name is shipped
std::string fileOf(const std::string &nameOrPath);

} // namespace scenariofolder
