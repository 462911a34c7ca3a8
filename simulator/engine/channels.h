#pragma once

#include "encoding.h"
#include "entrypoints.h"
#include "listeners.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

/// The synchronous channels of a board. Each keeps the last 1024 reports until they are read.
class Channels
{
public:
    /// \return the number of the new channel, from 1 on
    int open(OrvexDataCallback callback, void *context);
    void close(int number);
    /// Ends every read that waits; nothing can be opened any more.
    void closeAll();
    bool anyOpen() const;

    /// Hands a report to every channel, and on this thread to their callbacks.
    /// \param invoke called with each callback and its context
    template <typename Invoke>
    void put(const Report &report, Invoke invoke)
    {
        for (const auto &channel : keep(report))
            channel->listeners.call(invoke);
    }

    /// Waits for a report.
    /// \return the number of bytes written, 0 when the time is over, -1 when there is no such channel (any
    /// more)
    int read(int number, unsigned char *buffer, std::size_t size, unsigned int timeoutMs);

private:
    struct Channel
    {
        Listeners listeners;
        std::deque<Report> reports;
        bool closed = false;
    };
    using Found = std::vector<std::shared_ptr<Channel>>;

    Found keep(const Report &report);
    static void end(const Found &leaving);

    mutable std::mutex mutex; ///< of everything but the listeners, which have their own
    std::condition_variable changed;
    int last = 0;
    bool ended = false;
    std::map<int, std::shared_ptr<Channel>> channels;
};
