#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// Callbacks with their contexts, called by any number of threads while others come and go.
///
/// No lock is held while a callback runs, so a callback may do anything, also to this list. Removing a
/// callback waits until it no longer runs anywhere, except from within a callback, which waits for nothing:
/// it would wait for itself, or for one that waits for it.
class Listeners
{
public:
    /// A callback of any type; whoever calls it knows which.
    using Function = void (*)();

    /// Adds a callback with its context unless it is there already, or is null.
    void add(Function function, void *context);
    void remove(Function function, void *context);
    void removeAll();
    bool empty() const;

    /// Calls `invoke(function, context)` for each listener that is there now and has not gone meanwhile.
    /// \return how many were called
    template <typename Invoke>
    int call(Invoke invoke)
    {
        int called = 0;
        for (const std::shared_ptr<Entry> &entry : snapshot()) {
            if (!enter(*entry))
                continue;
            invoke(entry->function, entry->context);
            leave(*entry);
            ++called;
        }
        return called;
    }

    /// Whether the calling thread is within a callback of any list.
    static bool insideCallback();
    /// Does something that waits for nothing, as if it were a callback.
    static void asCallback(const std::function<void()> &action);

private:
    struct Entry
    {
        Function function;
        void *context;
        bool present = true;
        int running = 0; ///< calls that have not returned
    };
    using Entries = std::vector<std::shared_ptr<Entry>>;

    Entries snapshot() const;
    Entries::iterator find(Function function, void *context);
    bool enter(Entry &entry);
    void leave(Entry &entry);
    void remove(Entries::iterator first, Entries::iterator last, std::unique_lock<std::mutex> &lock);

    mutable std::mutex mutex;
    std::condition_variable returned;
    Entries entries;
};
