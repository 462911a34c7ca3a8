#include "endingthreads.h"

#include "listeners.h"

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
    {
        const std::lock_guard lock(mutex);
        std::move(ending.begin(), ending.end(), std::back_inserter(kept));
        ending.clear();
        if (!Listeners::insideCallback())
            ending.swap(kept);
    }
    for (std::thread &thread : ending) {
        if (thread.joinable()) // what never started has none
            thread.join();
    }
}
