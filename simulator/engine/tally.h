#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>

struct Counts
{
    std::uint64_t sent = 0;
    std::uint64_t delivered = 0; ///< callbacks that returned
};

/// Counts reports, in all and by board; what was counted stays when the board is gone. Any thread.
class Tally
{
public:
    /// From the first count on, even of nothing, a board is known.
    void count(int id, Counts more)
    {
        const std::lock_guard lock(mutex);
        for (Counts *counts : {&all, &byId[id]}) {
            counts->sent += more.sent;
            counts->delivered += more.delivered;
        }
        if (more.delivered > 0)
            grown.notify_all();
    }
    Counts totals() const
    {
        const std::lock_guard lock(mutex);
        return all;
    }
    /// Nothing for an id that is not known.
    std::optional<Counts> of(int id) const
    {
        const std::lock_guard lock(mutex);
        const auto match = byId.find(id);
        return match == byId.end() ? std::nullopt : std::optional(match->second);
    }
    /// \return whether so many were delivered before the time was over
    bool waitDelivered(std::uint64_t count, unsigned int timeoutMs)
    {
        std::unique_lock lock(mutex);
        return grown.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                              [&] { return all.delivered >= count; });
    }

private:
    mutable std::mutex mutex;
    std::condition_variable grown;
    Counts all;
    std::map<int, Counts> byId;
};
