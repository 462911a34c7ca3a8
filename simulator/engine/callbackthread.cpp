#include "callbackthread.h"

#include <algorithm>
#include <exception>
#include <iterator>

void CallbackThread::start()
{
    thread = std::thread([self = shared_from_this()] { self->run(); });
}

std::thread CallbackThread::stop()
{
    std::thread ended;
    {
        const std::lock_guard lock(mutex);
        stopping = true;
        ended.swap(thread);
    }
    wake.notify_all();
    listeners.removeAll();
    return ended;
}

void CallbackThread::addListener(Listeners::Function function, void *context)
{
    {
        const std::lock_guard lock(mutex);
        if (stopping)
            return;
        listeners.add(function, context);
        registered = registered || function;
    }
    wake.notify_all();
}

bool CallbackThread::wasRegistered()
{
    const std::lock_guard lock(mutex);
    return registered;
}

void CallbackThread::run()
{
    try {
        std::unique_lock lock(mutex);
        while (!stopping)
            step(lock);
    } catch (const std::exception &) {
        // Out of memory, or of threads: nothing happens any more. The process is somebody else's.
    }
}

EndingThreads::~EndingThreads()
{
    for (std::thread &thread : kept) {
        // The process may be ending from within a callback, on this very thread.
        if (thread.get_id() == std::this_thread::get_id())
            thread.detach();
        else
            thread.join();
    }
}

void EndingThreads::end(const CallbackThreads &leaving)
{
    std::vector<std::thread> ending;
    for (const auto &one : leaving) {
        std::thread thread = one->stop();
        if (thread.joinable()) // what never started has none
            ending.push_back(std::move(thread));
    }
    {
        const std::lock_guard lock(mutex);
        std::move(kept.begin(), kept.end(), std::back_inserter(ending));
        const auto first = std::partition(ending.begin(), ending.end(), [](const std::thread &thread) {
            return !Listeners::insideCallback() && thread.get_id() != std::this_thread::get_id();
        });
        kept.assign(std::move_iterator(first), std::move_iterator(ending.end()));
        ending.erase(first, ending.end());
    }
    for (std::thread &thread : ending)
        thread.join();
}
