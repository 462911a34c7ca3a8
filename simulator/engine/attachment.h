#pragma once

#include "listeners.h"
#include "scenario.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// What there is from an attach to its detach: the plug-and-play callbacks, and a thread that calls them and
/// lets the library's events happen at their times.
class Attachment : public std::enable_shared_from_this<Attachment>
{
public:
    using Happen = std::function<bool(const LibraryEvent &)>;

    /// \param happen called on the thread for each event of the library; false for one that is not due any
    /// more
    explicit Attachment(Happen happen);

    void start();
    /// Tells the thread to end and forgets all listeners and events.
    /// \return the thread, which the caller joins or keeps; it holds this object until it has ended
    std::thread stop();

    void addListener(Listeners::Function function, void *context);
    void removeListener(Listeners::Function function, void *context);
    /// \param events their times count from now
    void add(const std::vector<LibraryEvent> &events);
    /// Every listener is called once more.
    void notify() { add({LibraryEvent{}}); }

private:
    using Clock = std::chrono::steady_clock;

    void run();
    void step(std::unique_lock<std::mutex> &lock);
    void perform(const LibraryEvent &event);

    const Happen happen;
    Listeners listeners;
    std::mutex mutex; ///< of everything below
    std::condition_variable wake;
    std::multimap<Clock::time_point, LibraryEvent> waiting;
    bool stopping = false;
    std::thread thread;
};
