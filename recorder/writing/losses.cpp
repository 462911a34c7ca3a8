#include "losses.h"

#include <algorithm>

namespace recorder {

namespace {

constexpr std::uint64_t maxOpen = UINT32_MAX; // so that a product fits; a broken host may write anything

struct Open
{
    std::size_t slot;
    std::uint64_t count;
};

} // namespace

std::vector<BoardLoss> Losses::before(const capture::Header &packet)
{
    if (packet.lost == 0)
        return {};
    std::vector<Open> open;
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < told.size(); ++i) {
        const ring::BoardSlot &slot = control.boards[i];
        const std::uint64_t count = slot.lost;
        if (slot.key == 0 || count <= told[i])
            continue;
        open.push_back({i, std::min(count - told[i], maxOpen)});
        sum += open.back().count;
    }
    std::uint64_t rest = std::min<std::uint64_t>(packet.lost, sum);
    std::vector<BoardLoss> losses;
    for (const Open &one : open) {
        const std::uint64_t share = rest * one.count / sum;
        rest -= share;
        sum -= one.count;
        told[one.slot] += share;
        const auto board = static_cast<std::uint32_t>(control.boards[one.slot].key);
        if (share > 0)
            losses.push_back({packet.sequence, static_cast<std::int32_t>(board), share});
    }
    return losses;
}

} // namespace recorder
