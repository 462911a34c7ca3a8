#include "mainwindow/livewindows.h"

#include <algorithm>
#include <atomic>
#include <pthread.h>
#include <vector>

namespace livewindows {

namespace {

// Prefers the one that waits for it exclusively: boards that stream without a pause would keep it out
// forever.
pthread_rwlock_t lock = PTHREAD_RWLOCK_WRITER_NONRECURSIVE_INITIALIZER_NP;
std::atomic<pthread_t> guiThread;

/// Never destroyed: threads of the driver library may outlive the statics.
std::vector<const void *> &windows()
{
    static auto &all = *new std::vector<const void *>;
    return all;
}

} // namespace

void add(const qorvexgraph *window)
{
    guiThread = pthread_self();
    pthread_rwlock_wrlock(&lock);
    windows().push_back(window);
    pthread_rwlock_unlock(&lock);
}

void remove(const qorvexgraph *window)
{
    pthread_rwlock_wrlock(&lock);
    auto &all = windows();
    all.erase(std::remove(all.begin(), all.end(), window), all.end());
    pthread_rwlock_unlock(&lock);
}

Guard::Guard(void *context)
    : onForeignThread(pthread_self() != guiThread.load(std::memory_order_relaxed))
{
    // On the GUI thread nothing changes the list meanwhile, and a callback may lead to the next one.
    if (onForeignThread)
        pthread_rwlock_rdlock(&lock);
    const auto &all = windows();
    if (std::find(all.begin(), all.end(), context) != all.end())
        listed = static_cast<qorvexgraph *>(context);
}

Guard::~Guard()
{
    if (onForeignThread)
        pthread_rwlock_unlock(&lock);
}

} // namespace livewindows
