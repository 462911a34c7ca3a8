#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "recordreader.h"

namespace CLI {
class App;
}

namespace padscope {

/// Which packets a verb takes. An empty list takes any.
struct Filters
{
    std::vector<std::int32_t> boards;
    std::vector<std::string> types; ///< of reports; other packets have none
    std::vector<std::string> kinds;
    double from = -std::numeric_limits<double>::infinity(); ///< in seconds since the first packet
    double to = std::numeric_limits<double>::infinity();    ///< before that

    /// \param seconds since the first packet
    bool take(const capture::Record &record, double seconds) const;
};

/// Adds --board, --type, --from and --to.
void addFilters(CLI::App *command, Filters &filters);

/// Adds --kind.
void addKindFilter(CLI::App *command, Filters &filters);

} // namespace padscope
