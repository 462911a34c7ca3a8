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

/// Counts reports, in all and by board; what was counted stays when the board is gone.
class Tally
{
public:
    void know(int id);
    void sent(int id);
    void delivered(int id);

    Counts totals() const;
    /// Nothing for an id that is not known.
    std::optional<Counts> of(int id) const;
    /// \return whether so many were delivered before the time was over
    bool waitDelivered(std::uint64_t count, unsigned int timeoutMs);

private:
    mutable std::mutex mutex;
    std::condition_variable grown;
    int waiting = 0;
    Counts all;
    std::map<int, Counts> byId;
};
