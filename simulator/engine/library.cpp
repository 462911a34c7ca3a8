#include "library.h"

#include <algorithm>
#include <system_error>

// Who is attached, and which boards there are.

Library &Library::instance()
{
    static Library library;
    return library;
}

Library::~Library()
{
    detach();
}

int Library::attach()
{
    endingThreads.join({});
    try {
        const std::lock_guard lock(mutex);
        if (state.attachment)
            return 1;
        state.attachment =
            std::make_shared<Attachment>([this](const LibraryEvent &event) { return happen(event); });
        state.attachment->start();
        powerAll();
        return 1;
    } catch (const std::system_error &) {
        detach();
        return 0;
    }
}

void Library::power(Socket &socket)
{
    socket.board = std::make_shared<Board>(socket.plan, tally, [this](const Board &gone) { vanish(gone); });
    socket.board->start();
    tally.count(socket.plan.id, {});
}

void Library::detach()
{
    locked([](State &now) { return ++now.detaching; });
    letGo();
    std::unique_lock lock(mutex);
    --state.detaching;
    detached.notify_all();
    // Another thread may be joining what this one found gone.
    if (!Listeners::insideCallback())
        detached.wait(lock, [this] { return state.detaching == 0; });
}

void Library::letGo()
{
    std::vector<std::shared_ptr<Board>> leaving;
    std::shared_ptr<Attachment> over;
    locked([&](State &now) {
        leaving = now.plugged.takeAttached();
        over.swap(now.attachment);
    });
    Threads ending;
    if (over)
        ending.push_back(over->stop());
    for (const auto &board : leaving)
        ending.push_back(board->stop());
    endingThreads.join(std::move(ending));
}

std::shared_ptr<Attachment> Library::attachment()
{
    return locked([](State &now) { return now.attachment; });
}

std::vector<std::shared_ptr<Board>> Library::boards()
{
    return locked([](State &now) { return now.plugged.attached(); });
}

std::vector<std::shared_ptr<Board>> Library::boardsWith(int id)
{
    auto found = boards();
    const auto other = [id](const auto &board) { return board->id() != id; };
    found.erase(std::remove_if(found.begin(), found.end(), other), found.end());
    return found;
}

bool Library::plug(int id)
{
    return locked([&](State &) { return plugLocked(id); });
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

bool Library::unplug(int id)
{
    auto ending = pullOut([id](const Socket &socket) { return socket.plan.id == id; });
    if (ending)
        endingThreads.join(std::move(*ending));
    return ending.has_value();
}

/// Takes out the first board that is wanted, stops it and notifies.
/// \return its thread while somebody is attached; nothing when there is no such board
std::optional<Threads> Library::pullOut(const std::function<bool(const Socket &)> &isWanted)
{
    const auto socket = locked([&](State &now) { return now.plugged.takeOut(isWanted); });
    if (!socket)
        return std::nullopt;
    Threads ending;
    if (!socket->board)
        return ending;
    ending.push_back(socket->board->stop());
    if (const auto current = attachment())
        current->notify();
    return ending;
}

/// Called on the board's own thread.
void Library::vanish(const Board &board)
{
    const Listeners::Within within;
    auto ending = pullOut([&board](const Socket &socket) { return socket.board.get() == &board; });
    if (ending)
        endingThreads.join(std::move(*ending));
}
