#include "livewindows.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <type_traits>

namespace livewindows {

struct Entry
{
    const void *window;
    Entry *next;
    std::thread::id guiThread;
    int refCount = 1; ///< the list, and each callback in progress on another thread
    int busy = 0;     ///< callbacks among them that have not reached their signal
    std::condition_variable changed{};
};

namespace {

// Neither has a destructor: threads of the driver library may outlive the static objects.
std::mutex mutex;
Entry *first = nullptr;
constexpr std::chrono::seconds signalTimeout{1};

static_assert(std::is_trivially_destructible_v<std::mutex>);

/// The link to the entry of a window, or the null link at the end of the list. The mutex is held.
Entry **find(const void *window)
{
    Entry **link = &first;
    while (*link && (*link)->window != window)
        link = &(*link)->next;
    return link;
}

/// The mutex is held.
void release(Entry *entry)
{
    if (--entry->refCount == 0)
        delete entry;
    else
        entry->changed.notify_all();
}

} // namespace

void add(const qorvexgraph *window)
{
    const std::lock_guard lock(mutex);
    first = new Entry{window, first, std::this_thread::get_id()};
}

void remove(const qorvexgraph *window)
{
    std::unique_lock lock(mutex);
    Entry **link = find(window);
    Entry *entry = *link;
    if (!entry)
        return;
    *link = entry->next;
    entry->changed.wait(lock, [entry] { return entry->busy == 0; });
    entry->changed.wait_for(lock, signalTimeout, [entry] { return entry->refCount == 1; });
    release(entry);
}

Guard::Guard(void *context)
{
    const std::lock_guard lock(mutex);
    Entry *entry = *find(context);
    if (!entry)
        return;
    listed = static_cast<qorvexgraph *>(context);
    if (entry->guiThread != std::this_thread::get_id()) {
        counted = entry;
        ++entry->refCount;
        ++entry->busy;
    }
}

Guard::~Guard()
{
    if (!counted)
        return;
    const std::lock_guard lock(mutex);
    if (!isSignalling)
        --counted->busy;
    release(counted);
}

void Guard::beforeSignal()
{
    if (!counted)
        return;
    const std::lock_guard lock(mutex);
    isSignalling = true;
    --counted->busy;
    counted->changed.notify_all();
}

} // namespace livewindows
