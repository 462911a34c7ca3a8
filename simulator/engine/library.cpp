#include "library.h"

#include <algorithm>
#include <system_error>
#include <utility>

// Who is attached, and which boards there are.

Library &Library::instance()
{
    static Library library;
    return library;
}

int Library::attach()
{
    endingThreads.end({});
    try {
        const std::lock_guard lock(mutex);
        if (state.attachment)
            return 1;
        state.attachment =
            std::make_shared<Attachment>([this](const LibraryEvent &event) { return happen(event); });
        state.attachment->start();
        if (state.player)
            state.plugged.arrange(state.player->boards());
        powerAll();
        if (state.player)
            state.player->begin();
        return 1;
    } catch (const std::system_error &) {
        detach();
        return 0;
    }
}

void Library::power(Socket &socket)
{
    const auto vanish = [this](const Board &gone) { // on the board's own thread
        Listeners::asCallback(
            [&] { unplugFirst([&](const Socket &one) { return one.board.get() == &gone; }); });
    };
    socket.board = std::make_shared<Board>(socket.plan, tally, vanish);
    if (!state.player) // which delivers what the board sends
        socket.board->start();
    tally.count(socket.plan.id, {});
}

void Library::detach()
{
    std::shared_ptr<Player> played;
    endingThreads.end(locked([&](State &now) {
        ++now.detaching;
        CallbackThreads leaving = now.plugged.takeAttached();
        if (now.attachment && now.player) {
            played = std::exchange(now.player, std::make_shared<Player>(now.scenario.replay, *this));
            leaving.insert(leaving.begin(), played);
        }
        if (now.attachment)
            leaving.insert(leaving.begin(), std::exchange(now.attachment, nullptr));
        return leaving;
    }));
    if (played)
        played->finish();
    std::unique_lock lock(mutex);
    --state.detaching;
    detached.notify_all();
    // Another thread may be joining what this one found gone.
    if (!Listeners::insideCallback())
        detached.wait(lock, [this] { return state.detaching == 0; });
}

std::vector<std::shared_ptr<Board>> Library::boardsWith(int id)
{
    auto found = boards();
    const auto other = [id](const auto &board) { return board->id() != id; };
    found.erase(std::remove_if(found.begin(), found.end(), other), found.end());
    return found;
}

bool Library::plugLocked(int id)
{
    Socket *socket = state.plugged.plug(id, state.scenario);
    if (socket && state.attachment) {
        power(*socket);
        state.attachment->notify();
    }
    return socket != nullptr;
}

/// \return whether there was such a board
bool Library::unplugFirst(const std::function<bool(const Socket &)> &isWanted)
{
    const auto socket = locked([&](State &now) { return now.plugged.remove(isWanted); });
    if (socket && socket->board) {
        endingThreads.end({socket->board});
        if (const auto current = attachment())
            current->notify();
    }
    return socket.has_value();
}
