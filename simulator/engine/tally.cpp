#include "tally.h"

#include <chrono>

void Tally::count(int id, Counts more)
{
    const std::lock_guard lock(mutex);
    for (Counts *counts : {&all, &byId[id]}) {
        counts->sent += more.sent;
        counts->delivered += more.delivered;
    }
    if (more.delivered > 0)
        grown.notify_all();
}

Counts Tally::totals() const
{
    const std::lock_guard lock(mutex);
    return all;
}

std::optional<Counts> Tally::of(int id) const
{
    const std::lock_guard lock(mutex);
    const auto match = byId.find(id);
    return match == byId.end() ? std::nullopt : std::optional(match->second);
}

bool Tally::waitDelivered(std::uint64_t count, unsigned int timeoutMs)
{
    std::unique_lock lock(mutex);
    return grown.wait_for(lock, std::chrono::milliseconds(timeoutMs), [&] { return all.delivered >= count; });
}
