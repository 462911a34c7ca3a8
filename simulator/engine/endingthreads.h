#pragma once

#include <mutex>
#include <thread>
#include <vector>

using Threads = std::vector<std::thread>;

/// Joins threads that have been told to end. Within a callback they are kept instead, for the next caller to
/// join: a thread of theirs may be the caller's own.
class EndingThreads
{
public:
    ~EndingThreads();

    /// \param ending may hold some that never started
    void join(Threads ending);

private:
    std::mutex mutex;
    Threads kept;
};
