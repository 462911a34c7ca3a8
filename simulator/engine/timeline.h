#pragma once

#include "scenario.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// Lets the library's events happen at their times, on a thread of its own that starts with the first of
/// them.
class Timeline : public std::enable_shared_from_this<Timeline>
{
public:
    using Happen = std::function<void(const Timeline &, const LibraryEvent &)>;

    /// \param happen_ called on the thread for each event
    explicit Timeline(Happen happen_);

    /// \param events their times count from now
    void add(const std::vector<LibraryEvent> &events);
    /// Tells the thread to end.
    /// \return the thread, which the caller joins or keeps; it holds this object until it has ended
    std::thread stop();

private:
    using Clock = std::chrono::steady_clock;

    void run();
    void step(std::unique_lock<std::mutex> &lock);

    const Happen happen;
    std::mutex mutex; ///< of everything below
    std::condition_variable wake;
    std::multimap<Clock::time_point, LibraryEvent> waiting;
    bool stopping = false;
    std::thread thread;
};
