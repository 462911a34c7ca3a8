#include "pairing.h"

#include <algorithm>
#include <limits>

namespace comparing {

namespace {

/// A changed pair and some pairs that fit ill cost less than two that are left over.
constexpr double leftOver = changedPair / 2 + 4;
constexpr double unreachable = std::numeric_limits<double>::infinity();

/// Costs from each pair of indices to the ends, on the diagonals that the edits suffice for.
class Table
{
public:
    explicit Table(const Stretch &of)
        : stretch(of)
        , width(of.editsInA + of.editsInB + 1)
        , costs((of.lengthA + 1) * width, unreachable)
    {
    }

    bool has(std::size_t a, std::size_t b) const
    {
        return a <= stretch.lengthA && b <= stretch.lengthB && a <= b + stretch.editsInA &&
               b <= a + stretch.editsInB;
    }
    double at(std::size_t a, std::size_t b) const { return has(a, b) ? costs[indexOf(a, b)] : unreachable; }
    void set(std::size_t a, std::size_t b, double cost) { costs[indexOf(a, b)] = cost; }

    std::size_t firstB(std::size_t a) const { return a > stretch.editsInA ? a - stretch.editsInA : 0; }
    std::size_t endB(std::size_t a) const { return std::min(stretch.lengthB, a + stretch.editsInB) + 1; }

private:
    std::size_t indexOf(std::size_t a, std::size_t b) const { return a * width + (b + stretch.editsInA - a); }

    const Stretch &stretch;
    std::size_t width;
    std::vector<double> costs;
};

} // namespace

std::vector<PairingStep> pairInOrder(const Stretch &stretch,
                                     const std::function<double(std::size_t, std::size_t)> &cost)
{
    Table rest(stretch);
    const auto throughPair = [&](std::size_t a, std::size_t b) {
        if (a == stretch.lengthA || b == stretch.lengthB || rest.at(a + 1, b + 1) == unreachable)
            return unreachable;
        const double ofPair = cost(a, b);
        return ofPair == noPair ? unreachable : ofPair + rest.at(a + 1, b + 1);
    };
    rest.set(stretch.lengthA, stretch.lengthB, 0);
    for (std::size_t a = stretch.lengthA + 1; a-- > 0;) {
        for (std::size_t b = rest.endB(a); b-- > rest.firstB(a);) {
            if (a == stretch.lengthA && b == stretch.lengthB)
                continue;
            const double unpaired = leftOver + std::min(rest.at(a + 1, b), rest.at(a, b + 1));
            rest.set(a, b, std::min(throughPair(a, b), unpaired));
        }
    }
    std::vector<PairingStep> steps;
    std::size_t a = 0;
    std::size_t b = 0;
    while (a < stretch.lengthA || b < stretch.lengthB) {
        const bool isPair = rest.at(a, b) == throughPair(a, b);
        const bool takesA = isPair || rest.at(a, b) == leftOver + rest.at(a + 1, b);
        steps.push_back({takesA, isPair || !takesA});
        a += steps.back().takesA ? 1 : 0;
        b += steps.back().takesB ? 1 : 0;
    }
    return steps;
}

} // namespace comparing
