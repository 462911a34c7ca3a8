#include "listeners.h"

#include <algorithm>

/// How many callbacks the thread is in. Has no destructor, which would keep the library from being unloaded.
static thread_local int depth = 0;

bool Listeners::insideCallback()
{
    return depth > 0;
}

void Listeners::asCallback(const std::function<void()> &action)
{
    ++depth;
    action();
    --depth;
}

Listeners::Entries::iterator Listeners::find(Function function, void *context)
{
    return std::find_if(entries.begin(), entries.end(), [&](const auto &entry) {
        return entry->function == function && entry->context == context;
    });
}

void Listeners::add(Function function, void *context)
{
    const std::lock_guard lock(mutex);
    if (function && find(function, context) == entries.end())
        entries.push_back(std::make_shared<Entry>(Entry{function, context}));
}

void Listeners::remove(Function function, void *context)
{
    std::unique_lock lock(mutex);
    const auto match = find(function, context);
    remove(match, match == entries.end() ? match : match + 1, lock);
}

void Listeners::removeAll()
{
    std::unique_lock lock(mutex);
    remove(entries.begin(), entries.end(), lock);
}

void Listeners::remove(Entries::iterator first, Entries::iterator last, std::unique_lock<std::mutex> &lock)
{
    const Entries leaving(first, last);
    entries.erase(first, last);
    for (const auto &entry : leaving)
        entry->present = false;
    if (insideCallback())
        return;
    returned.wait(lock, [&leaving] {
        return std::none_of(leaving.begin(), leaving.end(), [](const auto &entry) { return entry->running; });
    });
}

bool Listeners::empty() const
{
    const std::lock_guard lock(mutex);
    return entries.empty();
}

Listeners::Entries Listeners::snapshot() const
{
    const std::lock_guard lock(mutex);
    return entries;
}

bool Listeners::enter(Entry &entry)
{
    const std::lock_guard lock(mutex);
    if (!entry.present)
        return false;
    ++entry.running;
    ++depth;
    return true;
}

void Listeners::leave(Entry &entry)
{
    const std::lock_guard lock(mutex);
    --depth;
    if (--entry.running == 0 && !entry.present)
        returned.notify_all();
}
