#include "spread.h"

#include <algorithm>
#include <limits>

namespace statistics {

namespace {

/// \param rank from 1
std::int64_t ranked(std::vector<std::int64_t> &values, std::size_t rank)
{
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(rank - 1);
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

/// Capped to what the type holds.
std::int64_t distance(std::int64_t a, std::int64_t b)
{
    const auto [less, greater] = std::minmax(a, b);
    const auto distance = static_cast<std::uint64_t>(greater) - static_cast<std::uint64_t>(less);
    constexpr auto max = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return static_cast<std::int64_t>(std::min(distance, max));
}

} // namespace

Spread spreadOf(std::vector<std::int64_t> &durationsNs)
{
    Spread spread;
    spread.count = durationsNs.size();
    if (durationsNs.empty())
        return spread;
    const auto [min, max] = std::minmax_element(durationsNs.begin(), durationsNs.end());
    spread.minNs = *min;
    spread.maxNs = *max;
    spread.medianNs = ranked(durationsNs, (durationsNs.size() + 1) / 2);
    spread.p99Ns = ranked(durationsNs, (durationsNs.size() * 99 + 99) / 100);
    return spread;
}

void subtract(std::vector<std::int64_t> &durationsNs, std::int64_t otherNs)
{
    for (std::int64_t &duration : durationsNs)
        duration = distance(duration, otherNs);
}

} // namespace statistics
