#pragma once

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
    void count(int id, Counts more);

    Counts totals() const;
    /// Nothing for an id that is not known.
    std::optional<Counts> of(int id) const;
    /// \return whether so many were delivered before the time was over
    bool waitDelivered(std::uint64_t count, unsigned int timeoutMs);

private:
    mutable std::mutex mutex;
    std::condition_variable grown;
    Counts all;
    std::map<int, Counts> byId;
};
