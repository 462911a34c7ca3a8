#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <vector>

#include "callbackthread.h"
#include "scenario.h"

/// From an attach to its detach: the hot-plug callbacks, and a thread that calls them and lets the library's
/// events happen at their times.
class Attachment : public CallbackThread
{
public:
    using Happen = std::function<bool(const LibraryEvent &)>;

    /// \param happen_ called on the thread for each event; returns whether the callbacks are to be called
    explicit Attachment(Happen happen_)
        : happen(std::move(happen_))
    {
    }

    /// \param events their times count from now
    void add(const std::vector<LibraryEvent> &events);
    /// Every listener is called once more.
    void notify() { add({LibraryEvent{}}); }
    /// The same on the calling thread.
    void notifyNow();

private:
    using Clock = std::chrono::steady_clock;

    void step(std::unique_lock<std::mutex> &lock) override;

    const Happen happen;
    std::multimap<Clock::time_point, LibraryEvent> waiting; ///< under the mutex
};
