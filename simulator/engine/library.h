#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "attachment.h"
#include "faults.h"
#include "pluggedboards.h"
#include "tally.h"

/// The library's one state: the scenario, the boards that are plugged in and, while somebody is attached,
/// what runs. All functions may be called on any thread.
///
/// Which boards are plugged in outlives a detach, and so does what the scenario's timeline has done: it
/// happens once. Threads are never joined under the lock.
class Library
{
public:
    struct State
    {
        Scenario scenario; ///< its events are those to come
        std::string scenarioName = "default";
        std::string error; ///< why the last scenario or fault failed
        PluggedBoards plugged;
        StandingFaults standing;
        std::shared_ptr<Attachment> attachment; ///< null while nobody is attached
        unsigned lastEvent = 0;                 ///< number of the event that was scheduled last
        int detaching = 0;                      ///< detaches under way
    };

    static Library &instance();
    ~Library() { detach(); }

    /// `use(State &)` under the lock.
    template <typename Use>
    auto locked(Use use)
    {
        const std::lock_guard lock(mutex);
        return use(state);
    }
    std::shared_ptr<Attachment> attachment()
    {
        return locked([](State &now) { return now.attachment; });
    }
    /// Those that are attached.
    std::vector<std::shared_ptr<Board>> boards()
    {
        return locked([](State &now) { return now.plugged.attached(); });
    }
    std::vector<std::shared_ptr<Board>> boardsWith(int id);

    /// \return 1, or 0 when no thread could be started
    int attach();
    void detach();
    bool plug(int id)
    {
        return locked([&](State &) { return plugLocked(id); });
    }
    bool unplug(int id)
    {
        return unplugFirst([id](const Socket &socket) { return socket.plan.id == id; });
    }
    /// Replaces all boards by those of another scenario. On failure nothing has changed but the error.
    bool choose(const std::string &nameOrPath);
    bool trigger(const std::string &fault);

    Tally tally;

private:
    using Socket = PluggedBoards::Socket;

    Library();
    // Under the lock.
    void power(Socket &socket);
    void powerAll();
    bool plugLocked(int id);
    void schedule(std::vector<LibraryEvent> events);
    void change(const LibraryEvent &event);
    // Without it.
    bool unplugFirst(const std::function<bool(const Socket &)> &isWanted);
    bool happen(const LibraryEvent &event);
    bool fail(const std::string &error);

    std::mutex mutex;
    State state;
    std::condition_variable detached;
    EndingThreads endingThreads; ///< the last member: whoever still runs uses the others
};
