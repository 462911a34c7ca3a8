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
    endingThreads.join();
    try {
        const std::lock_guard lock(mutex);
        if (current)
            return 1;
        current = std::make_shared<Attachment>([this](const LibraryEvent &event) { return happen(event); });
        current->start();
        powerAll();
        return 1;
    } catch (const std::system_error &) {
        detach();
        return 0;
    }
}

void Library::power(PluggedBoards::Socket &socket)
{
    socket.board = std::make_shared<Board>(socket.plan, tally, [this](const Board &gone) { vanish(gone); });
    socket.board->start();
    tally.count(socket.plan.id, {});
}

void Library::detach()
{
    {
        const std::lock_guard lock(mutex);
        ++detaching;
    }
    letGo();
    std::unique_lock lock(mutex);
    --detaching;
    detached.notify_all();
    // Another thread may be joining what this one found gone.
    if (!Listeners::insideCallback())
        detached.wait(lock, [this] { return detaching == 0; });
}

void Library::letGo()
{
    std::vector<std::shared_ptr<Board>> leaving;
    std::shared_ptr<Attachment> over;
    {
        const std::lock_guard lock(mutex);
        leaving = plugged.takeAttached();
        over.swap(current);
    }
    Threads ending;
    if (over)
        ending.push_back(over->stop());
    for (const auto &board : leaving)
        ending.push_back(board->stop());
    endingThreads.join(std::move(ending));
}

std::vector<std::shared_ptr<Board>> Library::boards() const
{
    const std::lock_guard lock(mutex);
    return plugged.attached();
}

std::vector<std::shared_ptr<Board>> Library::boardsWith(int id) const
{
    auto found = boards();
    const auto other = [id](const auto &board) { return board->id() != id; };
    found.erase(std::remove_if(found.begin(), found.end(), other), found.end());
    return found;
}

std::shared_ptr<Attachment> Library::attachment() const
{
    const std::lock_guard lock(mutex);
    return current;
}

std::vector<int> Library::ids() const
{
    const std::lock_guard lock(mutex);
    std::vector<int> found;
    for (const PluggedBoards::Socket &socket : plugged.all())
        found.push_back(socket.plan.id);
    return found;
}

bool Library::plug(int id)
{
    const std::lock_guard lock(mutex);
    return plugLocked(id);
}

bool Library::plugLocked(int id)
{
    PluggedBoards::Socket *socket = plugged.plug(id, scenario);
    if (socket && current) {
        power(*socket);
        current->notify();
    }
    return socket != nullptr;
}

bool Library::unplug(int id)
{
    auto socket = takeOut(id);
    if (!socket)
        return false;
    endingThreads.join(pullOut(std::move(*socket)));
    return true;
}

std::optional<PluggedBoards::Socket> Library::takeOut(int id)
{
    const std::lock_guard lock(mutex);
    return plugged.takeOut([id](const PluggedBoards::Socket &socket) { return socket.plan.id == id; });
}

/// Stops a board that has been taken out, and notifies.
/// \return its thread, which there is while somebody is attached
std::thread Library::pullOut(PluggedBoards::Socket socket)
{
    if (!socket.board)
        return {};
    std::thread ending = socket.board->stop();
    if (const auto attached = attachment())
        attached->notify();
    return ending;
}

/// Called on the board's own thread.
void Library::vanish(const Board &board)
{
    const Listeners::Within within;
    std::optional<PluggedBoards::Socket> socket;
    {
        const std::lock_guard lock(mutex);
        socket = plugged.takeOut(
            [&board](const PluggedBoards::Socket &other) { return other.board.get() == &board; });
    }
    if (socket)
        endingThreads.join(pullOut(std::move(*socket)));
}

bool Library::setRate(int id, int perSecond)
{
    const std::lock_guard lock(mutex);
    return plugged.setRate(id, perSecond);
}

int Library::reportedCount() const
{
    const std::lock_guard lock(mutex);
    return current ? std::max(0, static_cast<int>(plugged.all().size()) + standing.countLie) : 0;
}

std::optional<int> Library::reportedId(int index) const
{
    const std::lock_guard lock(mutex);
    const auto number = static_cast<std::size_t>(index);
    if (!current || number >= plugged.all().size() || standing.failingIndexes.count(index) > 0)
        return std::nullopt;
    return plugged.all()[number].plan.id;
}
