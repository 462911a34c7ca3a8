#include "editpath.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace comparing {

namespace {

constexpr std::int32_t unreachable = -1;

/// Diagonal k has the points (x, x - k). Each row holds, for its number of edits d, the furthest x on the
/// diagonals -d, -d + 2, ... d.
class PathSearch
{
public:
    PathSearch(std::size_t countInA, std::size_t countInB,
               const std::function<bool(std::size_t, std::size_t)> &equal)
        : areEqual(equal)
        , lengthA(static_cast<std::int32_t>(countInA))
        , lengthB(static_cast<std::int32_t>(countInB))
    {
    }

    EditPath run(std::size_t maxEdits)
    {
        const std::int32_t last = std::min(static_cast<std::int32_t>(maxEdits), lengthA + lengthB);
        for (std::int32_t edits = 0; edits <= last; ++edits) {
            rowOf(edits).assign(static_cast<std::size_t>(edits) + 1, unreachable);
            for (std::int32_t k = -edits; k <= edits; k += 2) {
                const std::int32_t x = furthest(edits, k);
                at(edits, k) = x;
                if (x == lengthA && x - k == lengthB)
                    return pathTo(edits, k, true);
            }
        }
        return pathTo(last, furthestDiagonal(last), false);
    }

private:
    std::int32_t &at(std::int32_t edits, std::int32_t k)
    {
        return rowOf(edits)[static_cast<std::size_t>((k + edits) / 2)];
    }

    std::vector<std::int32_t> &rowOf(std::int32_t edits) { return rows[static_cast<std::size_t>(edits % 2)]; }

    std::int32_t reached(std::int32_t edits, std::int32_t k)
    {
        return k < -edits || k > edits ? unreachable : at(edits, k);
    }

    /// Where one more edit leads to on a diagonal: by an added one if that leads at least as far.
    std::int32_t afterEdit(std::int32_t edits, std::int32_t k)
    {
        if (edits == 0)
            return 0;
        const std::int32_t added = reached(edits - 1, k + 1);
        const std::int32_t removed = reached(edits - 1, k - 1);
        const bool canAdd = added != unreachable && added - k <= lengthB;
        const bool canRemove = removed != unreachable && removed < lengthA;
        if (canAdd && (!canRemove || added > removed))
            return added;
        return canRemove ? removed + 1 : unreachable;
    }

    std::int32_t furthest(std::int32_t edits, std::int32_t k)
    {
        std::int32_t x = afterEdit(edits, k);
        while (x != unreachable && x < lengthA && x - k < lengthB &&
               areEqual(static_cast<std::size_t>(x), static_cast<std::size_t>(x - k)))
            ++x;
        return x;
    }

    /// The one that leads through most of both.
    std::int32_t furthestDiagonal(std::int32_t edits)
    {
        std::int32_t best = -edits;
        std::int32_t bestSum = -1;
        for (std::int32_t k = -edits; k <= edits; k += 2) {
            const std::int32_t x = at(edits, k);
            if (x != unreachable && 2 * x - k > bestSum) {
                best = k;
                bestSum = 2 * x - k;
            }
        }
        return best;
    }

    EditPath pathTo(std::int32_t edits, std::int32_t k, bool reachesGoal)
    {
        EditPath path;
        path.a = static_cast<std::size_t>(at(edits, k));
        path.b = static_cast<std::size_t>(at(edits, k) - k);
        path.edits = static_cast<std::size_t>(edits);
        path.reachesGoal = reachesGoal;
        return path;
    }

    const std::function<bool(std::size_t, std::size_t)> &areEqual;
    const std::int32_t lengthA;
    const std::int32_t lengthB;
    std::array<std::vector<std::int32_t>, 2> rows; ///< this one, and the one before
};

} // namespace

EditPath shortestPath(std::size_t lengthA, std::size_t lengthB,
                      const std::function<bool(std::size_t, std::size_t)> &areEqual, std::size_t maxEdits)
{
    return PathSearch(lengthA, lengthB, areEqual).run(maxEdits);
}

} // namespace comparing
