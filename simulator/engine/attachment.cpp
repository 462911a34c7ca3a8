#include "attachment.h"

#include "entrypoints.h"

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

void Attachment::step(std::unique_lock<std::mutex> &lock)
{
    if (waiting.empty()) {
        wake.wait(lock);
        return;
    }
    const auto [time, event] = *waiting.begin();
    if (Clock::now() < time) {
        wake.wait_until(lock, time);
        return;
    }
    waiting.erase(waiting.begin());
    lock.unlock();
    if (happen(event))
        notifyNow();
    lock.lock();
}

void Attachment::notifyNow()
{
    listeners.call([](Listeners::Function function, void *context) {
        reinterpret_cast<OrvexPnpCallback>(function)(context);
    });
}
