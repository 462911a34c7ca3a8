#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

/// The lock that callers of the driver library share. Its holder may take it again; whoever does not hold it
/// releases nothing.
class CallerLock
{
public:
    void take();
    void release();

private:
    std::mutex mutex;
    std::condition_variable released;
    std::thread::id holder;
    int taken = 0;
};
