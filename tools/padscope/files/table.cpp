#include "table.h"

#include <algorithm>
#include <cstdio>

namespace padscope {

void print(const Table &table, int indent)
{
    std::vector<int> widths;
    for (const std::vector<std::string> &row : table) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], static_cast<int>(row[i].size()));
    }
    for (const std::vector<std::string> &row : table) {
        std::printf("%*s%-*s", indent, "", widths[0], row[0].c_str());
        for (std::size_t i = 1; i < row.size(); ++i)
            std::printf("  %*s", widths[i], row[i].c_str());
        std::putchar('\n');
    }
}

} // namespace padscope
