#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "callbackthread.h"
#include "replay.h"
#include "replayclock.h"
#include "replaytiming.h"

class Library;

/// Plays a capture: one thread that delivers all reports and notifications, in the order of the capture
/// across all boards, each at its time. All functions may be called on any thread.
///
/// Time stands still until the boards of the start have callbacks, and whenever a report is due for a board
/// that the host has not registered one for yet. What is late follows at once; what is later than a quarter
/// of a second stretches time. Nothing is dropped.
class Player : public CallbackThread
{
public:
    enum class State
    {
        Waiting = 1, ///< for callbacks, or for a command
        Playing,
        Paused,
        Ended,
    };

    struct Status
    {
        State state;
        double rate;
        double achievedRate;
        std::int64_t positionNs;
        std::uint64_t sent;
        std::uint64_t round; ///< from 1 on
        std::chrono::nanoseconds errorMedian;
        std::chrono::nanoseconds errorP99;
        std::chrono::nanoseconds errorMax;
    };

    Player(std::shared_ptr<const Replay> replay_, Library &library_);

    const Replay &replay() const { return *played; }
    Status status();
    /// Boards at the place where it is.
    std::vector<BoardHistory::Present> boards();

    /// Starts the thread.
    void begin();
    /// After the thread's end: prints how it went unless that is done.
    void finish();

    // Where these return on another thread than a callback's, what was under way is over, unless it takes
    // longer than a tenth of a second.
    void pause(bool isPaused);
    /// Pauses, plays the next reports at once, and rests. Returns when they are delivered, or when none was
    /// for a tenth of a second; on a callback's thread at once.
    void stepBy(int reports);
    /// \return whether there is such a place
    bool seek(std::int64_t positionNs);
    /// \return whether there may be such a rate
    bool setRate(double rate);
    /// From the beginning, first round.
    void restart();

    /// The host has registered a callback.
    /// \param board nothing for the hot-plug callback
    void registered(std::optional<int> board);
    void commandSent(int board, const std::string &text);
    /// What the call returned when it was recorded, as far as that is known.
    std::optional<RecordedAnswer> answer(unsigned call, std::string_view arguments);

private:
    using Steady = ReplayClock::Steady;
    using Lock = std::unique_lock<std::mutex>;

    /// What the host has to do before something is played.
    struct Missing
    {
        std::string what;       ///< empty when it is nothing
        bool hasLimit = true;   ///< it is not waited for without end
        std::set<int> silent{}; ///< boards that have no callback
    };

    // On the thread.
    void sleepPrecisely();
    void step(Lock &lock) override;
    void play(const ReplayEntry &entry, Steady::time_point due, Lock &lock);
    bool perform(const ReplayEntry &entry, std::size_t position);
    bool deliver(const ReplayEntry &entry);
    void arrange(Lock &lock);
    void endRound(Lock &lock);
    void end(Lock &lock);
    bool isHeldUp(const ReplayEntry &entry, Lock &lock);
    Missing missing(const ReplayEntry &entry, Lock &lock);
    Missing missingAtStart(const std::set<int> &notAwaited);
    Missing missingCallback(const ReplayEntry &entry, const std::set<int> &notAwaited);
    Missing missingCommand(const ReplayEntry &entry);

    // Under the mutex.
    bool isResting() const { return hasEnded || (paused && steps == 0); }
    void performed();
    void standStill();
    void moveTo(std::size_t entry, std::int64_t positionNs);
    void changed(Lock &lock);
    void tellThread();
    bool canSettle() const;
    bool isSettled() const { return !isBusy && !hasMoved && steps == 0; }
    std::int64_t positionNs() const;
    State state() const;
    std::string summary() const;

    const std::shared_ptr<const Replay> played;
    Library &library;
    // Of the thread alone.
    ReplayBytes bytes;
    std::size_t nextChange = 0; ///< position at which other boards are there
    bool isPrecise = false;

    std::condition_variable settled;
    // Under the mutex.
    ReplayClock clock;
    ReplayTiming timing;
    std::size_t next; ///< index of the entry that comes next
    std::uint64_t round = 1;
    std::uint64_t sent = 0;
    std::uint64_t steps = 0; ///< reports still to be sent although it is paused
    bool paused;
    bool hasEnded = false;
    bool isPrinted = false;
    bool hasThread = false;
    bool hasSought = false; ///< so more or fewer reports are sent than the rounds have
    bool hasBegun = false;  ///< the boards of the start have callbacks
    bool hasMoved = false;  ///< the boards are not those of this place yet
    bool isBusy = false;    ///< something is being delivered
    std::uint64_t done = 0; ///< counts what was delivered
    std::uint64_t news = 0; ///< counts what comes from outside
    std::optional<Steady::time_point> heldUpSince;
    std::set<int> givenUp;                             ///< boards whose callback was waited for in vain
    std::vector<std::pair<int, std::string>> commands; ///< sent by the host, and not awaited yet
};
