#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "attachment.h"
#include "faults.h"
#include "player.h"
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
        std::shared_ptr<Player> player;         ///< null unless the scenario is a replay
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
    std::shared_ptr<Player> player()
    {
        return locked([](State &now) { return now.player; });
    }
    /// Whether the scenario is a replay. Takes no lock.
    static bool isReplaying() { return replaying.load(std::memory_order_relaxed); }
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

    // For a player, which may be another one than the scenario's meanwhile: then there is nothing to be done.

    /// \return whether other boards are enumerated than before
    bool arrange(const Player &player, const std::vector<BoardHistory::Present> &present);
    /// Calls the hot-plug callbacks on the calling thread.
    void notify(const Player &player);
    /// The first board with this id, null when there is none.
    std::shared_ptr<Board> boardOf(const Player &player, int id);
    /// Those that are enumerated.
    std::vector<std::shared_ptr<Board>> boardsOf(const Player &player);
    /// Prints a line on standard error.
    static void say(const std::string &line);

    Tally tally;

private:
    using Socket = PluggedBoards::Socket;

    Library();
    // Under the lock.
    void use(Scenario scenario);
    void power(Socket &socket);
    void powerAll();
    bool plugLocked(int id);
    void schedule(std::vector<LibraryEvent> events);
    void change(const LibraryEvent &event);
    // Without it.
    bool unplugFirst(const std::function<bool(const Socket &)> &isWanted);
    bool happen(const LibraryEvent &event);
    bool fail(const std::string &error);

    static std::atomic<bool> replaying;

    std::mutex mutex;
    State state;
    std::condition_variable detached;
    EndingThreads endingThreads; ///< the last member: whoever still runs uses the others
};
