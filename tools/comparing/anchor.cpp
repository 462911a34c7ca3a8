#include "anchor.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace comparing {

namespace {

constexpr std::size_t neighbours = 8;
/// Places with equal hashes that are compared. With tolerances many may differ all the same.
constexpr int maxCandidates = 16;

std::uint64_t hashOf(const std::vector<std::uint64_t> &hashes, std::size_t first, std::size_t count)
{
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < count; ++i)
        hash = hash * 0x9E3779B97F4A7C15 + hashes[first + i];
    return hash;
}

} // namespace

std::optional<Anchor> nearestAnchor(const std::vector<std::uint64_t> &hashesA,
                                    const std::vector<std::uint64_t> &hashesB,
                                    const std::function<bool(std::size_t, std::size_t)> &areEqual)
{
    const std::size_t count = std::min({neighbours, hashesA.size(), hashesB.size()});
    if (count == 0)
        return std::nullopt;
    using Place = std::pair<std::uint64_t, std::size_t>;
    std::vector<Place> places;
    for (std::size_t b = 0; b + count <= hashesB.size(); ++b)
        places.emplace_back(hashOf(hashesB, b, count), b);
    std::sort(places.begin(), places.end());
    const auto areAllEqual = [count, &areEqual](std::size_t a, std::size_t b) {
        std::size_t i = 0;
        while (i < count && areEqual(a + i, b + i))
            ++i;
        return i == count;
    };
    std::optional<Anchor> nearest;
    std::size_t distance = std::numeric_limits<std::size_t>::max();
    for (std::size_t a = 0; a + count <= hashesA.size() && a < distance; ++a) {
        const std::uint64_t hash = hashOf(hashesA, a, count);
        auto place = std::lower_bound(places.begin(), places.end(), Place{hash, 0});
        for (int i = 0; i < maxCandidates && place != places.end() && place->first == hash; ++i, ++place) {
            if (a + place->second < distance && areAllEqual(a, place->second)) {
                nearest = {a, place->second};
                distance = a + place->second;
                break;
            }
        }
    }
    return nearest;
}

} // namespace comparing
