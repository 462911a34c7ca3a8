#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>

/// Numbers that are the same in every run from the same seed. The standard fixes the engine's numbers but
/// not those of its distributions, so these are made here.
class Random
{
public:
    explicit Random(std::uint32_t seed)
        : engine(seed)
    {
    }

    /// 0 to `limit` - 1.
    int below(int limit) { return static_cast<int>(engine() % static_cast<std::uint32_t>(limit)); }
    /// -`reach` to `reach`.
    int around(int reach) { return below(2 * reach + 1) - reach; }

    template <typename List>
    void shuffle(List &list)
    {
        for (std::size_t left = list.size(); left > 1; --left)
            std::swap(list[left - 1], list[static_cast<std::size_t>(below(static_cast<int>(left)))]);
    }

private:
    std::mt19937 engine;
};
