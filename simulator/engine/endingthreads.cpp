#include "endingthreads.h"

#include "listeners.h"

#include <algorithm>
#include <iterator>

EndingThreads::~EndingThreads()
{
    for (std::thread &thread : kept) {
        // The process may be ending from within a callback, on this very thread.
        if (thread.get_id() == std::this_thread::get_id())
            thread.detach();
        else
            thread.join();
    }
}

void EndingThreads::join(Threads ending)
{
    ending.erase(
        std::remove_if(ending.begin(), ending.end(), [](const auto &thread) { return !thread.joinable(); }),
        ending.end());
    {
        const std::lock_guard lock(mutex);
        std::move(ending.begin(), ending.end(), std::back_inserter(kept));
        ending.clear();
        if (!Listeners::insideCallback())
            ending.swap(kept);
    }
    for (std::thread &thread : ending)
        thread.join();
}

void EndingThreads::join(std::thread ending)
{
    Threads one;
    one.push_back(std::move(ending));
    join(std::move(one));
}
