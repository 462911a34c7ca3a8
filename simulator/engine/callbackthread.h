#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "listeners.h"

/// A thread that does one step after another, and the callbacks that it calls. All functions may be called on
/// any thread.
class CallbackThread : public std::enable_shared_from_this<CallbackThread>
{
public:
    virtual ~CallbackThread() = default;

    void start();
    /// Tells the thread to end and forgets all callbacks.
    /// \return the thread, which the caller joins or keeps; it holds this object until it has ended
    std::thread stop();

    void addListener(Listeners::Function function, void *context);
    /// Whether a callback was ever registered.
    bool wasRegistered();
    void removeListener(Listeners::Function function, void *context) { listeners.remove(function, context); }

protected:
    /// Does the next thing that is to be done, or waits until there may be one.
    /// \param lock of `mutex`; released for what takes its time
    virtual void step(std::unique_lock<std::mutex> &lock) = 0;
    /// Under the mutex: step() is to return.
    bool isStopping() const { return stopping; }

    Listeners listeners;
    std::mutex mutex;
    std::condition_variable wake;

private:
    void run();

    bool stopping = false; ///< under the mutex, as are the two after
    bool registered = false;
    std::thread thread;
};

using CallbackThreads = std::vector<std::shared_ptr<CallbackThread>>;

/// Stops threads and joins them. Within a callback they are kept for the next caller to join: one of them may
/// be the caller's own, or wait for it.
class EndingThreads
{
public:
    ~EndingThreads();

    /// Ends these, and those that were kept.
    void end(const CallbackThreads &leaving);

private:
    std::mutex mutex;
    std::vector<std::thread> kept;
};
