#include "timeline.h"

#include <new>
#include <system_error>

Timeline::Timeline(Happen happen_)
    : happen(std::move(happen_))
{
}

void Timeline::add(const std::vector<LibraryEvent> &events)
{
    {
        const auto now = Clock::now();
        const std::lock_guard lock(mutex);
        if (stopping || events.empty())
            return;
        for (const LibraryEvent &event : events)
            waiting.emplace(now + event.at, event);
        if (!thread.joinable())
            thread = std::thread([self = shared_from_this()] { self->run(); });
    }
    wake.notify_all();
}

std::thread Timeline::stop()
{
    std::thread ended;
    {
        const std::lock_guard lock(mutex);
        stopping = true;
        ended.swap(thread);
    }
    wake.notify_all();
    return ended;
}

void Timeline::run()
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

void Timeline::step(std::unique_lock<std::mutex> &lock)
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
    happen(*this, event);
    lock.lock();
}
