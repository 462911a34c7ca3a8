#pragma once

#include <cstddef>
#include <functional>

namespace comparing {

/// A way from the beginnings of A and B to `a` and `b`.
struct EditPath
{
    std::size_t a = 0;
    std::size_t b = 0;
    std::size_t edits = 0; ///< removed and added
    bool reachesGoal = false;

    std::size_t matches() const { return (a + b - edits) / 2; }
};

/// Finds the path with the fewest edits that leads to the ends of both. This is the greedy algorithm of
/// Eugene W. Myers, "An O(ND) Difference Algorithm and Its Variations", Algorithmica 1 (1986). The relation
/// needs to be neither symmetric nor transitive.
/// \param areEqual whether an index in A and one in B hold the same
/// \param maxEdits with more than these the path is the one with them that leads furthest
EditPath shortestPath(std::size_t lengthA, std::size_t lengthB,
                      const std::function<bool(std::size_t, std::size_t)> &areEqual, std::size_t maxEdits);

} // namespace comparing
