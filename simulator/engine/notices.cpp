#include "notices.h"

#include "entrypoints.h"

#include <new>

void Notices::start()
{
    thread = std::thread([self = shared_from_this()] { self->run(); });
}

std::thread Notices::stop()
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

void Notices::addListener(Listeners::Function function, void *context)
{
    const std::lock_guard lock(mutex);
    if (!stopping)
        listeners.add(function, context);
}

void Notices::removeListener(Listeners::Function function, void *context)
{
    listeners.remove(function, context);
}

void Notices::post()
{
    {
        const std::lock_guard lock(mutex);
        ++pending;
    }
    wake.notify_all();
}

void Notices::run()
{
    try {
        std::unique_lock lock(mutex);
        for (;;) {
            wake.wait(lock, [this] { return stopping || pending > 0; });
            if (stopping)
                return;
            --pending;
            lock.unlock();
            notify();
            lock.lock();
        }
    } catch (const std::bad_alloc &) {
        // Out of memory nobody is notified any more; the process is somebody else's.
    }
}

void Notices::notify()
{
    listeners.call([](Listeners::Function function, void *context) {
        reinterpret_cast<OrvexPnpCallback>(function)(context);
    });
}
