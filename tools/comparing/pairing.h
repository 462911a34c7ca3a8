#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace comparing {

/// A step through removed and added packets: one of A, one of B, or one of each as a pair.
struct PairingStep
{
    bool takesA = false;
    bool takesB = false;
};

/// The cost of a pair that may not be.
inline constexpr int noPair = -1;

/// Pairs as many as possible, in order, and of these choices takes the one of the lowest cost.
/// \param cost of a pair of indices, at most 65536, or noPair
std::vector<PairingStep> pairInOrder(std::size_t lengthA, std::size_t lengthB,
                                     const std::function<int(std::size_t, std::size_t)> &cost);

} // namespace comparing
