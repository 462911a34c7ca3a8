#pragma once

#include "attachment.h"
#include "endingthreads.h"
#include "faults.h"
#include "pluggedboards.h"
#include "tally.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// The library's one state: the scenario, the boards that are plugged in and, while somebody is attached,
/// what runs. All functions may be called on any thread.
///
/// Which boards are plugged in outlives a detach, and so does what the scenario's timeline has done: it
/// happens once. Threads are never joined under the lock.
class Library
{
public:
    static Library &instance();
    ~Library();

    /// \return 1, or 0 when no thread could be started
    int attach();
    void detach();

    /// Those that are attached.
    std::vector<std::shared_ptr<Board>> boards() const;
    std::vector<std::shared_ptr<Board>> boardsWith(int id) const;
    /// Null while nobody is attached.
    std::shared_ptr<Attachment> attachment() const;
    /// Ids of the boards that are plugged in, attached or not.
    std::vector<int> ids() const;

    bool plug(int id);
    bool unplug(int id);
    bool setRate(int id, int perSecond);

    /// What the entry points say of the boards, lies included.
    int reportedCount() const;
    std::optional<int> reportedId(int index) const;
    /// What is wrong with this command. A delay is for one command only.
    StandingFaults takeCommandFaults();

    /// Replaces all boards by those of another scenario. On failure nothing has changed but lastError().
    bool choose(const std::string &nameOrPath);
    std::string currentScenario() const;
    bool trigger(const std::string &fault);
    /// Nothing for a fault that does not last.
    std::optional<bool> isOn(const std::string &fault) const;
    std::string lastError() const;

    Tally tally;

private:
    Library();
    void power(PluggedBoards::Socket &socket);
    void powerAll();
    void schedule(std::vector<LibraryEvent> events);
    void letGo();
    bool plugLocked(int id);
    std::thread pullOut(PluggedBoards::Socket socket);
    std::optional<PluggedBoards::Socket> takeOut(int id);
    void vanish(const Board &board);
    bool happen(const LibraryEvent &event);
    void change(const LibraryEvent &event);
    bool complain(const std::string &line);

    mutable std::mutex mutex; ///< of everything below
    std::condition_variable detached;
    Scenario scenario; ///< its events are those to come
    std::string scenarioName;
    std::string error;
    PluggedBoards plugged;
    StandingFaults standing;
    std::shared_ptr<Attachment> current;
    unsigned lastEvent = 0; ///< number of the event that was scheduled last
    int detaching = 0;      ///< detaches under way

    EndingThreads endingThreads; ///< the last member: whoever still runs uses the others
};
