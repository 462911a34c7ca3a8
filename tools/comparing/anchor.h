#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace comparing {

/// Where A and B go on alike.
struct Anchor
{
    std::size_t a = 0;
    std::size_t b = 0;
};

/// Finds the nearest place from which on several neighbours are equal: eight, or all of a shorter sequence.
/// \param hashesA, hashesB equal for what is equal
std::optional<Anchor> nearestAnchor(const std::vector<std::uint64_t> &hashesA,
                                    const std::vector<std::uint64_t> &hashesB,
                                    const std::function<bool(std::size_t, std::size_t)> &areEqual);

} // namespace comparing
