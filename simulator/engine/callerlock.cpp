#include "callerlock.h"

void CallerLock::take()
{
    std::unique_lock lock(mutex);
    const auto self = std::this_thread::get_id();
    released.wait(lock, [&] { return taken == 0 || holder == self; });
    holder = self;
    ++taken;
}

void CallerLock::release()
{
    const std::lock_guard lock(mutex);
    if (taken == 0 || holder != std::this_thread::get_id())
        return;
    if (--taken == 0)
        released.notify_one();
}
