#include "tally.h"

#include <chrono>

void Tally::know(int id)
{
    const std::lock_guard lock(mutex);
    byId[id];
}

void Tally::sent(int id)
{
    const std::lock_guard lock(mutex);
    ++all.sent;
    ++byId[id].sent;
}

void Tally::delivered(int id)
{
    const std::lock_guard lock(mutex);
    ++all.delivered;
    ++byId[id].delivered;
    if (waiting > 0)
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
    ++waiting;
    const bool reached =
        grown.wait_for(lock, std::chrono::milliseconds(timeoutMs), [&] { return all.delivered >= count; });
    --waiting;
    return reached;
}
