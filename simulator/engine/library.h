#pragma once

#include "board.h"
#include "faults.h"
#include "notices.h"
#include "scenario.h"
#include "tally.h"
#include "timeline.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

/// The library's one state: the boards that are plugged in and, while somebody is attached, their threads.
///
/// Which boards are plugged in outlives a detach, and so does what the scenario's timeline has done: it
/// happens once. Threads are never joined under the lock, nor from within a callback: there they are put
/// aside, for the next attach or detach or the end of the library to join.
class Library
{
public:
    static Library &instance();
    ~Library();

    /// \return 1, or 0 when no thread could be started
    int attach();
    void detach();

    std::vector<std::shared_ptr<Board>> boards() const;
    std::vector<std::shared_ptr<Board>> boardsWith(int id) const;
    /// Null while nobody is attached.
    std::shared_ptr<Notices> notices() const;
    /// Ids of the boards that are plugged in, attached or not.
    std::vector<int> ids() const;

    bool plug(int id);
    bool unplug(int id);
    bool setRate(int id, int perSecond);

    /// What the entry points say of the boards, lies included.
    int reportedCount() const;
    std::optional<int> reportedId(int index) const;
    struct CommandFaults
    {
        int delayMs = 0;
        bool callback = false;
    };
    /// What goes wrong with this command. A delay is for one command only.
    CommandFaults takeCommandFaults();

    /// Replaces all boards by those of another scenario. On failure nothing has changed but lastError().
    bool choose(const std::string &nameOrPath);
    std::string currentScenario() const;
    bool trigger(const std::string &fault);
    /// Nothing for a fault that does not last.
    std::optional<bool> isOn(const std::string &fault) const;
    std::string lastError() const;

    Tally tally;

private:
    struct Socket
    {
        BoardPlan plan;
        std::shared_ptr<Board> board; ///< null while nobody is attached
    };
    using Threads = std::vector<std::thread>;
    struct StandingFaults
    {
        std::set<int> failingIndexes;
        int countLie = 0;
        CommandFaults commands;
    };

    Library();
    void readEnvironment();
    BoardPlan planFor(int id) const;
    void usePlaces();
    void powerBoard(Socket &socket);
    void power();
    void startEvents();
    struct Leaving
    {
        std::vector<std::shared_ptr<Board>> boards;
        std::shared_ptr<Timeline> timeline;
    };
    Leaving takeOut();
    static Threads stop(const Leaving &leaving);
    void letGo();
    void finish(Threads ending);
    bool plugLocked(int id);
    std::optional<std::thread> pullOut(int id);
    void vanish(const Board &board);
    void happen(const Timeline &source, const LibraryEvent &event);
    void change(const LibraryEvent &event);
    void complain(const std::string &line);

    mutable std::mutex mutex; ///< of everything below
    std::condition_variable detached;
    Scenario scenario;
    std::string scenarioName;
    std::string error;
    std::vector<Socket> sockets; ///< what is plugged in
    StandingFaults standing;
    std::shared_ptr<Notices> currentNotices;
    std::shared_ptr<Timeline> timeline; ///< there with `currentNotices`
    Threads retired;                    ///< told to end, and not yet joined
    int detaching = 0;                  ///< detaches under way
};
