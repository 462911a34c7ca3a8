#include <algorithm>

#include "library.h"
#include "player.h"

using namespace std::chrono_literals;

// What a player waits for that the host has to do.

constexpr auto maxWait = 5s;
constexpr std::size_t maxCommands = 1000;

namespace {

/// A text of the capture as a terminal may show it.
std::string quoted(std::string_view text)
{
    constexpr char hexDigits[] = "0123456789abcdef";
    std::string shown = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\r')
            shown += "\\r";
        else if (character == '"' || character == '\\')
            shown += {'\\', character};
        else if (character < ' ' || character > '~')
            shown += {'\\', 'x', hexDigits[byte / 16], hexDigits[byte % 16]};
        else
            shown += character;
    }
    return shown + '"';
}

} // namespace

void Player::registered(std::optional<int> board)
{
    const std::lock_guard lock(mutex);
    if (board)
        givenUp.erase(*board);
    ++news;
    wake.notify_all();
}

void Player::commandSent(int board, const std::string &text)
{
    if (!played->plan.lockstep)
        return;
    const std::lock_guard lock(mutex);
    if (commands.size() == maxCommands)
        commands.erase(commands.begin());
    commands.emplace_back(board, text);
    ++news;
    wake.notify_all();
}

std::optional<RecordedAnswer> Player::answer(unsigned call, std::string_view arguments)
{
    const std::lock_guard lock(mutex);
    const RecordedAnswer *found = played->answers.find(call, arguments, next, positionNs());
    return found ? std::optional(*found) : std::nullopt;
}

/// Whether an entry is not to be played now, since the host has something to do before, or since things have
/// changed. Time stands still meanwhile.
bool Player::isHeldUp(const ReplayEntry &entry, Lock &lock)
{
    const std::uint64_t seen = news;
    const Missing wanted = missing(entry, lock);
    if (news != seen || isStopping())
        return true;
    if (wanted.what.empty()) {
        heldUpSince.reset();
        return false;
    }
    if (clock.isRunning())
        clock.stand(entry.timeNs);
    timing.interrupt();
    if (!wanted.hasLimit) {
        heldUpSince.reset();
        wake.wait(lock);
        return true;
    }
    const auto now = Steady::now();
    if (!heldUpSince)
        heldUpSince = now;
    if (now < *heldUpSince + maxWait) {
        wake.wait_until(lock, Steady::time_point(*heldUpSince + maxWait));
        return true;
    }
    heldUpSince.reset();
    givenUp.insert(wanted.silent.begin(), wanted.silent.end());
    lock.unlock();
    library.say("replay: " + wanted.what + " within 5 s; the replay goes on");
    lock.lock();
    return news != seen || isStopping();
}

Player::Missing Player::missing(const ReplayEntry &entry, Lock &lock)
{
    const bool atStart = !hasBegun;
    if (!atStart && entry.kind == ReplayEntry::Command)
        return missingCommand(entry);
    const std::set<int> notAwaited = givenUp;
    lock.unlock();
    Missing found = atStart ? missingAtStart(notAwaited) : missingCallback(entry, notAwaited);
    lock.lock();
    return found;
}

/// Hosts attach long before they register anything, some of them. Once one board has a callback, the others
/// that had one when it was recorded are to follow.
Player::Missing Player::missingAtStart(const std::set<int> &notAwaited)
{
    Missing found;
    found.hasLimit = false;
    for (const auto &board : library.boardsOf(*this)) {
        const int id = board->id();
        if (board->wasRegistered()) {
            found.hasLimit = true;
        } else if (played->listened.count(id) > 0 && notAwaited.count(id) == 0) {
            found.what += (found.what.empty() ? "no callback for board " : ", ") + std::to_string(id);
            found.silent.insert(id);
        }
    }
    return found;
}

Player::Missing Player::missingCallback(const ReplayEntry &entry, const std::set<int> &notAwaited)
{
    if (entry.kind != ReplayEntry::Report || notAwaited.count(entry.board) > 0)
        return {};
    const auto board = library.boardOf(*this, entry.board);
    if (board && !board->wasRegistered())
        return {"no callback for board " + std::to_string(entry.board), true, {entry.board}};
    return {};
}

/// Under the mutex. Takes the command off those that were sent.
Player::Missing Player::missingCommand(const ReplayEntry &entry)
{
    const auto read = bytes.at(entry.offset, entry.recorded, entry.length);
    const std::string text(read ? read->text() : std::string_view());
    const auto sentOne =
        std::find(commands.begin(), commands.end(), std::pair<int, std::string>(entry.board, text));
    if (sentOne == commands.end())
        return {
            "command " + quoted(text) + " was not sent to board " + std::to_string(entry.board), true, {}};
    commands.erase(sentOne);
    return {};
}
