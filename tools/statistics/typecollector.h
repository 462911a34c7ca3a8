#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "recordreader.h"
#include "statistics.h"

namespace reports {
struct Layout;
}

namespace statistics {

/// Collects a board's reports of one type.
class TypeCollector
{
public:
    void follow(const capture::Record &report);
    /// What was collected is gone then.
    TypeStatistics take(const std::string &name);

private:
    struct Range
    {
        std::uint64_t count = 0;
        std::int64_t min = 0;
        std::int64_t max = 0;
        std::int64_t sum = 0;

        void add(std::int64_t value);
    };

    void followFields(const capture::Record &report);
    void addFields(std::vector<FieldStatistics> &list) const;

    std::uint64_t count = 0;
    std::uint64_t firstNs = 0;
    std::uint64_t lastNs = 0;
    std::vector<std::int64_t> gapsNs;
    std::map<const reports::Layout *, std::vector<Range>> ranges; ///< of the layout's fields, in its order
};

} // namespace statistics
