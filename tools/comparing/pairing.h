#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace comparing {

/// A step through two sequences: a packet of A, one of B, or one of each as a pair.
struct PairingStep
{
    bool takesA = false;
    bool takesB = false;
};

/// What is paired: as many packets of A and of B, of which so many at most are left over or changed.
struct Stretch
{
    std::size_t lengthA = 0;
    std::size_t lengthB = 0;
    std::size_t editsInA = 0;
    std::size_t editsInB = 0;
};

/// The cost of a pair that may not be.
inline constexpr double noPair = -1;
/// Added to the cost of a pair that is not equal. As much as two that are left over, but for the little that
/// makes a pair cheaper.
inline constexpr double changedPair = 2 << 20;

/// Pairs in order, with as few packets left over or changed as possible. Of these choices it takes the one
/// with the most pairs, unless the costs of pairs tell otherwise.
/// \param cost of a pair of indices: below 4 for equal ones, that and changedPair for others, or noPair
std::vector<PairingStep> pairInOrder(const Stretch &stretch,
                                     const std::function<double(std::size_t, std::size_t)> &cost);

} // namespace comparing
