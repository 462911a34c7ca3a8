#include <algorithm>

#include "player.h"

using namespace std::chrono_literals;

// What users and hosts do to a player.

constexpr auto maxSettling = 100ms; // a callback may be waiting for whoever asks

Player::Status Player::status()
{
    const std::lock_guard lock(mutex);
    return {state(), clock.rate(),        timing.achievedRate(), positionNs(),     sent,
            round,   timing.errorOf(500), timing.errorOf(990),   timing.maxError()};
}

Player::State Player::state() const
{
    if (hasEnded)
        return State::Ended;
    if (paused && steps == 0)
        return State::Paused;
    return !hasBegun || heldUpSince ? State::Waiting : State::Playing;
}

/// Between what was played last and what comes next.
std::int64_t Player::positionNs() const
{
    const bool isInside = next < played->end;
    const std::int64_t min = next > played->first ? played->entries[next - 1].timeNs : 0;
    const std::int64_t max = isInside ? played->entries[next].timeNs : played->lengthNs;
    return std::clamp(clock.positionAt(Steady::now()), min, max);
}

std::vector<BoardHistory::Present> Player::boards()
{
    const std::lock_guard lock(mutex);
    return played->boards.at(next);
}

void Player::standStill()
{
    clock.stand(positionNs());
    timing.interrupt();
    heldUpSince.reset();
}

void Player::tellThread()
{
    ++news;
    wake.notify_all();
}

/// A callback would wait for itself.
bool Player::canSettle() const
{
    return hasThread && !Listeners::insideCallback();
}

/// The thread takes up what was changed. Waits for what it is doing.
void Player::changed(Lock &lock)
{
    tellThread();
    const std::uint64_t before = done;
    if (canSettle())
        settled.wait_for(lock, maxSettling, [&] { return (!isBusy || done != before) && !hasMoved; });
}

void Player::pause(bool isPaused)
{
    Lock lock(mutex);
    standStill();
    paused = isPaused;
    steps = 0;
    changed(lock);
}

void Player::stepBy(int reports)
{
    Lock lock(mutex);
    if (hasEnded)
        return;
    standStill();
    paused = true;
    steps += static_cast<unsigned>(reports);
    tellThread();
    bool goesOn = canSettle();
    while (goesOn && !isSettled()) {
        const std::uint64_t before = done;
        goesOn = settled.wait_for(lock, maxSettling, [&] { return done != before || isSettled(); });
    }
}

void Player::moveTo(std::size_t entry, std::int64_t positionNs)
{
    isPrinted = isPrinted && !hasEnded;
    hasEnded = false;
    hasMoved = true;
    next = entry;
    timing.interrupt();
    clock.stand(positionNs);
    heldUpSince.reset();
    commands.clear();
}

bool Player::seek(std::int64_t positionNs)
{
    if (positionNs < 0 || positionNs > played->lengthNs)
        return false;
    Lock lock(mutex);
    const auto isBefore = [](const ReplayEntry &entry, std::int64_t wanted) { return entry.timeNs < wanted; };
    const auto begin = played->entries.begin();
    const auto place =
        std::lower_bound(begin + static_cast<std::ptrdiff_t>(played->first),
                         begin + static_cast<std::ptrdiff_t>(played->end), positionNs, isBefore);
    moveTo(static_cast<std::size_t>(place - begin), positionNs);
    hasSought = true;
    steps = 0;
    changed(lock);
    return true;
}

bool Player::setRate(double rate)
{
    const bool isAllowed = rate == unlimitedReplayRate || (rate >= minReplayRate && rate <= maxReplayRate);
    if (!isAllowed)
        return false;
    Lock lock(mutex);
    standStill();
    clock.setRate(rate);
    timing.beginRate();
    changed(lock);
    return true;
}

void Player::restart()
{
    Lock lock(mutex);
    moveTo(played->first, 0);
    round = 1;
    sent = 0;
    hasSought = false;
    steps = 0;
    timing = ReplayTiming();
    changed(lock);
}
