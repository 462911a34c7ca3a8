#include "pairing.h"

#include <algorithm>
#include <cstdint>

namespace comparing {

namespace {

constexpr std::int64_t unpaired = std::int64_t{1} << 24; ///< more than all pairs of a table cost

/// Costs from each pair of indices to the ends.
class Table
{
public:
    Table(std::size_t lengthA, std::size_t lengthB)
        : width(lengthB + 1)
        , costs((lengthA + 1) * width)
    {
    }

    std::int64_t &at(std::size_t a, std::size_t b) { return costs[a * width + b]; }

private:
    std::size_t width;
    std::vector<std::int64_t> costs;
};

} // namespace

std::vector<PairingStep> pairInOrder(std::size_t lengthA, std::size_t lengthB,
                                     const std::function<int(std::size_t, std::size_t)> &cost)
{
    Table rest(lengthA, lengthB);
    Table pairs(lengthA, lengthB);
    for (std::size_t a = lengthA + 1; a-- > 0;) {
        for (std::size_t b = lengthB + 1; b-- > 0;) {
            if (a == lengthA || b == lengthB) {
                rest.at(a, b) = static_cast<std::int64_t>(lengthA - a + lengthB - b) * unpaired;
                continue;
            }
            pairs.at(a, b) = cost(a, b);
            rest.at(a, b) = unpaired + std::min(rest.at(a + 1, b), rest.at(a, b + 1));
            if (pairs.at(a, b) != noPair)
                rest.at(a, b) = std::min(rest.at(a, b), pairs.at(a, b) + rest.at(a + 1, b + 1));
        }
    }
    std::vector<PairingStep> steps;
    std::size_t a = 0;
    std::size_t b = 0;
    while (a < lengthA || b < lengthB) {
        const bool hasBoth = a < lengthA && b < lengthB;
        const bool isPair =
            hasBoth && pairs.at(a, b) != noPair && rest.at(a, b) == pairs.at(a, b) + rest.at(a + 1, b + 1);
        const bool takesA =
            isPair || b == lengthB || (hasBoth && rest.at(a, b) == unpaired + rest.at(a + 1, b));
        steps.push_back({takesA, isPair || !takesA});
        a += steps.back().takesA ? 1 : 0;
        b += steps.back().takesB ? 1 : 0;
    }
    return steps;
}

} // namespace comparing
