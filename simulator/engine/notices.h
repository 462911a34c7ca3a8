#pragma once

#include "listeners.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

/// Tells the plug-and-play callbacks, on a thread of its own, that boards came or went.
class Notices : public std::enable_shared_from_this<Notices>
{
public:
    void start();
    /// Tells the thread to end and forgets all listeners and notices.
    /// \return the thread, which the caller joins or keeps; it holds this object until it has ended
    std::thread stop();

    void addListener(Listeners::Function function, void *context);
    void removeListener(Listeners::Function function, void *context);
    /// Every listener is called once more.
    void post();

private:
    void run();
    void notify();

    Listeners listeners;
    std::mutex mutex; ///< of everything below
    std::condition_variable wake;
    int pending = 0;
    bool stopping = false;
    std::thread thread;
};
