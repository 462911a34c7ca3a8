#include "player.h"

#include <algorithm>
#include <sys/prctl.h>

#include "library.h"

using namespace std::chrono_literals;

// What is played, and when.

constexpr auto maxReplayDelay = 250ms;
constexpr auto minRound = 10ms; // a capture of one report, played without end, is no flood

Player::Player(std::shared_ptr<const Replay> replay_, Library &library_)
    : played(std::move(replay_))
    , library(library_)
    , bytes(played->file)
    , clock(played->plan.rate)
    , next(played->first)
    , paused(played->plan.paused)
{
}

/// Without this the kernel lets the thread sleep 50 us longer than it asks for.
void Player::sleepPrecisely()
{
    if (!isPrecise)
        prctl(PR_SET_TIMERSLACK, 1UL);
    isPrecise = true;
}

void Player::step(Lock &lock)
{
    sleepPrecisely();
    if (hasMoved) {
        arrange(lock);
        return;
    }
    if (isResting()) {
        heldUpSince.reset();
        wake.wait(lock);
        return;
    }
    if (next == played->end) {
        endRound(lock);
        return;
    }
    const ReplayEntry &entry = played->entries[next];
    if (entry.kind == ReplayEntry::Nothing) {
        ++next;
        return;
    }
    if (!hasBegun && isHeldUp(entry, lock))
        return;
    hasBegun = true;
    const auto now = Steady::now();
    auto due = now;
    if (steps == 0 && clock.rate() > 0) {
        if (!clock.isRunning())
            clock.run(clock.positionAt(now), now);
        due = clock.dueTime(entry.timeNs);
        if (due > now) {
            wake.wait_until(lock, due);
            return;
        }
    }
    if (!isHeldUp(entry, lock))
        play(entry, due, lock);
}

void Player::play(const ReplayEntry &entry, Steady::time_point due, Lock &lock)
{
    const auto now = Steady::now();
    const bool isReport = entry.kind == ReplayEntry::Report;
    if (!clock.isRunning())
        clock.stand(entry.timeNs);
    else if (isReport)
        timing.addError(now - due);
    if (clock.isRunning() && now - due > maxReplayDelay)
        clock.run(entry.timeNs, now);
    if (steps == 0)
        timing.played(entry.timeNs, now);
    sent += isReport ? 1 : 0;
    steps -= isReport && steps > 0 ? 1 : 0;
    const std::size_t position = ++next;
    isBusy = true;
    lock.unlock();
    const bool isPerformed = perform(entry, position);
    lock.lock();
    performed();
    if (!isPerformed)
        end(lock);
}

/// \param position behind the entry
/// \return false when it cannot be read any more
bool Player::perform(const ReplayEntry &entry, std::size_t position)
{
    const bool isNotification = entry.kind == ReplayEntry::Notification;
    if (entry.kind == ReplayEntry::Report && !deliver(entry))
        return false;
    // A host that is notified sees the boards that there are from now on.
    if (position >= nextChange) {
        nextChange = played->boards.changeAfter(position);
        library.arrange(*this, played->boards.at(position));
    }
    if (isNotification)
        library.notify(*this);
    return true;
}

/// \return false when it cannot be read any more
bool Player::deliver(const ReplayEntry &entry)
{
    const unsigned char *report = nullptr;
    if (!entry.isNull) {
        const auto read = bytes.at(entry.offset, entry.recorded, entry.length);
        if (!read) {
            library.say("replay: " + played->plan.capture + ": offset " + std::to_string(entry.offset) +
                        ": it cannot be read any more");
            return false;
        }
        report = read->data;
    }
    if (const auto board = library.boardOf(*this, entry.board))
        board->deliver(report, entry.length);
    return true;
}

/// The boards become those of another place.
void Player::arrange(Lock &lock)
{
    hasMoved = false;
    isBusy = true;
    const std::size_t position = next;
    lock.unlock();
    nextChange = played->boards.changeAfter(position);
    if (library.arrange(*this, played->boards.at(position)))
        library.notify(*this);
    lock.lock();
    performed();
}

/// What was under way is over.
void Player::performed()
{
    isBusy = false;
    ++done;
    settled.notify_all();
}

void Player::endRound(Lock &lock)
{
    const bool isEmpty = played->first == played->end;
    if (isEmpty || (played->plan.rounds != 0 && round >= played->plan.rounds)) {
        end(lock);
        return;
    }
    ++round;
    moveTo(played->first, 0);
    if (played->plan.rounds != 0 || clock.rate() == unlimitedReplayRate)
        return;
    const auto length = std::chrono::nanoseconds(
        static_cast<std::int64_t>(static_cast<double>(played->lengthNs) / clock.rate()));
    if (length < minRound)
        clock.run(0, Steady::now() + minRound - length);
}

void Player::end(Lock &lock)
{
    hasEnded = true;
    isPrinted = true;
    steps = 0;
    timing.interrupt();
    clock.stand(positionNs());
    settled.notify_all();
    const std::string text = summary();
    lock.unlock();
    library.say(text);
    lock.lock();
}

void Player::begin()
{
    {
        const std::lock_guard lock(mutex);
        hasThread = true;
        hasMoved = false;
    }
    start();
}

void Player::finish()
{
    std::string text;
    {
        const std::lock_guard lock(mutex);
        if (!isPrinted && hasThread)
            text = summary();
        isPrinted = true;
    }
    if (!text.empty())
        library.say(text);
}

std::string Player::summary() const
{
    const auto ms = [](std::chrono::nanoseconds time) { return static_cast<double>(time.count()) * 1e-6; };
    char text[200];
    char rate[32] = "max";
    if (clock.rate() > 0)
        std::snprintf(rate, sizeof rate, "%g", clock.rate());
    std::string line = std::string("replay: asked rate ") + rate;
    if (timing.achievedRate() > 0) {
        std::snprintf(text, sizeof text, ", achieved %.3f", timing.achievedRate());
        line += text;
    }
    line += "; " + std::to_string(sent);
    std::uint64_t counted = sent;
    if (played->plan.rounds != 0 && !hasSought) {
        counted = played->reports * played->plan.rounds;
        line += " of " + std::to_string(counted);
    }
    line += counted == 1 ? " report" : " reports";
    if (timing.hasErrors()) {
        std::snprintf(text, sizeof text, "; error median %.3f ms, 99 %% %.3f ms, greatest %.3f ms",
                      ms(timing.errorOf(500)), ms(timing.errorOf(990)), ms(timing.maxError()));
        line += text;
    }
    if (played->gaps > 0 && sent > 0) {
        std::snprintf(
            text, sizeof text, "\nreplay: %llu %s shortened, by %.3f s in all%s",
            static_cast<unsigned long long>(played->gaps), played->gaps == 1 ? "pause was" : "pauses were",
            static_cast<double>(played->gapsNs) * 1e-9, played->plan.rounds == 1 ? "" : ", in each round");
        line += text;
    }
    return line;
}
