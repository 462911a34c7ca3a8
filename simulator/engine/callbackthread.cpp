#include "callbackthread.h"

#include <exception>

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
    }
    wake.notify_all();
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
