#include "attachment.h"

#include "entrypoints.h"

#include <new>
#include <system_error>

Attachment::Attachment(Happen happen_)
    : happen(std::move(happen_))
{
}

void Attachment::start()
{
    thread = std::thread([self = shared_from_this()] { self->run(); });
}

std::thread Attachment::stop()
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

void Attachment::addListener(Listeners::Function function, void *context)
{
    const std::lock_guard lock(mutex);
    if (!stopping)
        listeners.add(function, context);
}

void Attachment::removeListener(Listeners::Function function, void *context)
{
    listeners.remove(function, context);
}

void Attachment::add(const std::vector<LibraryEvent> &events)
{
    {
        const auto now = Clock::now();
        const std::lock_guard lock(mutex);
        for (const LibraryEvent &event : events)
            waiting.emplace(now + event.at, event);
    }
    wake.notify_all();
}

void Attachment::run()
{
    try {
        std::unique_lock lock(mutex);
        while (!stopping)
            step(lock);
    } catch (const std::bad_alloc &) {
        // Out of memory nothing happens any more; the process is somebody else's.
    } catch (const std::system_error &) {
        // A board without a thread: neither does it then.
    }
}

/// Does the next thing that is to be done, or waits until there may be one.
void Attachment::step(std::unique_lock<std::mutex> &lock)
{
    if (waiting.empty()) {
        wake.wait(lock);
        return;
    }
    const auto first = waiting.begin();
    if (Clock::now() < first->first) {
        wake.wait_until(lock, Clock::time_point(first->first));
        return;
    }
    const LibraryEvent event = first->second;
    waiting.erase(first);
    lock.unlock();
    perform(event);
    lock.lock();
}

void Attachment::perform(const LibraryEvent &event)
{
    const bool isLibrarys = event.number > 0;
    if ((isLibrarys && !happen(event)) || event.what != LibraryEvent::What::Notify)
        return;
    listeners.call([](Listeners::Function function, void *context) {
        reinterpret_cast<OrvexPnpCallback>(function)(context);
    });
}
