#include "library.h"

#include <algorithm>
#include <numeric>

// Which boards are plugged in.

std::vector<int> Library::ids() const
{
    const std::lock_guard lock(mutex);
    std::vector<int> found;
    for (const Socket &socket : sockets)
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
    Socket socket{planFor(id), nullptr};
    const auto sum = [](int total, const Socket &other) { return total + other.plan.rate; };
    const int total = std::accumulate(sockets.begin(), sockets.end(), socket.plan.rate, sum);
    if (sockets.size() >= mostBoards || total > highestTotalRate)
        return false;
    if (currentNotices) {
        powerBoard(socket);
        currentNotices->post();
    }
    sockets.push_back(std::move(socket));
    return true;
}

bool Library::unplug(int id)
{
    auto pulledOut = pullOut(id);
    if (!pulledOut)
        return false;
    Threads ending;
    ending.push_back(std::move(*pulledOut));
    finish(std::move(ending));
    return true;
}

/// Takes out the first board with this id, stops it and notifies.
/// \return its thread, which there is while somebody is attached; nothing when there is no such board
std::optional<std::thread> Library::pullOut(int id)
{
    std::shared_ptr<Board> leaving;
    {
        const std::lock_guard lock(mutex);
        const auto match = std::find_if(sockets.begin(), sockets.end(),
                                        [id](const Socket &socket) { return socket.plan.id == id; });
        if (match == sockets.end())
            return std::nullopt;
        leaving = std::move(match->board);
        sockets.erase(match);
    }
    if (!leaving)
        return std::thread();
    std::thread ending = leaving->stop();
    if (const auto current = notices())
        current->post();
    return ending;
}

/// Called on the board's own thread.
void Library::vanish(const Board &board)
{
    const Listeners::Within within;
    std::shared_ptr<Board> leaving;
    {
        const std::lock_guard lock(mutex);
        const auto match = std::find_if(sockets.begin(), sockets.end(), [&board](const Socket &socket) {
            return socket.board.get() == &board;
        });
        if (match == sockets.end())
            return;
        leaving = std::move(match->board);
        sockets.erase(match);
    }
    Threads ending;
    ending.push_back(leaving->stop());
    finish(std::move(ending));
    if (const auto current = notices())
        current->post();
}

bool Library::setRate(int id, int perSecond)
{
    if (perSecond < 1 || perSecond > highestRate)
        return false;
    const std::lock_guard lock(mutex);
    const auto total = [&](int sum, const Socket &socket) {
        return sum + (socket.plan.id == id ? perSecond : socket.plan.rate);
    };
    if (std::accumulate(sockets.begin(), sockets.end(), 0, total) > highestTotalRate)
        return false;
    bool found = false;
    for (Socket &socket : sockets) {
        if (socket.plan.id != id)
            continue;
        found = true;
        socket.plan.rate = perSecond;
        if (socket.board)
            socket.board->happen({{}, BoardEvent::What::Rate, perSecond});
    }
    return found;
}
