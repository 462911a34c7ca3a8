#include "mainwindow/livewindows.h"

#include <atomic>
#include <pthread.h>

namespace livewindows {

namespace {

// Prefers the one that waits for it exclusively: boards that stream without a pause would keep it out
// forever.
pthread_rwlock_t lock = PTHREAD_RWLOCK_WRITER_NONRECURSIVE_INITIALIZER_NP;
std::atomic<pthread_t> guiThread;

struct Entry
{
    const void *window;
    Entry *next;
};

/// A plain pointer, which needs no destructor: threads of the driver library may outlive the statics.
Entry *first = nullptr;

/// Where the entry of a window hangs; where the list ends without one.
Entry **find(const void *window)
{
    Entry **place = &first;
    while (*place && (*place)->window != window)
        place = &(*place)->next;
    return place;
}

} // namespace

void add(const qorvexgraph *window)
{
    guiThread = pthread_self();
    pthread_rwlock_wrlock(&lock);
    first = new Entry{window, first};
    pthread_rwlock_unlock(&lock);
}

void remove(const qorvexgraph *window)
{
    pthread_rwlock_wrlock(&lock);
    Entry **place = find(window);
    Entry *entry = *place;
    if (entry)
        *place = entry->next;
    pthread_rwlock_unlock(&lock);
    delete entry;
}

Guard::Guard(void *context)
    : onForeignThread(pthread_self() != guiThread.load(std::memory_order_relaxed))
{
    // On the GUI thread nothing changes the list meanwhile, and a callback may lead to the next one.
    if (onForeignThread)
        pthread_rwlock_rdlock(&lock);
    if (*find(context))
        listed = static_cast<qorvexgraph *>(context);
}

Guard::~Guard()
{
    if (onForeignThread)
        pthread_rwlock_unlock(&lock);
}

} // namespace livewindows
