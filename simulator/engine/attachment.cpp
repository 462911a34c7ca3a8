#include "attachment.h"

#include "entrypoints.h"

Attachment::Attachment(Happen happen_)
    : happen(std::move(happen_))
{
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
