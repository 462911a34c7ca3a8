#pragma once

#include <string>
#include <vector>

namespace padscope {

/// Rows of cells in ASCII; the first is the heading.
using Table = std::vector<std::vector<std::string>>;

/// Prints to standard output with aligned columns: the first to the left, all others to the right.
/// \param indent blanks before each row
void print(const Table &table, int indent);

} // namespace padscope
