#include "pluggedboards.h"

#include <algorithm>
#include <numeric>

void PluggedBoards::use(const Scenario &scenario)
{
    sockets.clear();
    for (const Scenario::Place &place : scenario.boards) {
        if (place.plugged)
            sockets.push_back({place.plan, nullptr});
    }
}

BoardPlan PluggedBoards::planFor(int id, const Scenario &scenario) const
{
    const auto isThere = [this](const BoardPlan &plan) {
        return std::any_of(sockets.begin(), sockets.end(),
                           [&plan](const Socket &socket) { return socket.plan.happened == plan.happened; });
    };
    for (const Scenario::Place &place : scenario.boards) {
        if (place.plan.id == id && !isThere(place.plan))
            return place.plan;
    }
    return {id, static_cast<std::uint32_t>(id)};
}

PluggedBoards::Socket *PluggedBoards::plug(int id, const Scenario &scenario)
{
    Socket socket{planFor(id, scenario), nullptr};
    const auto sum = [](int total, const Socket &other) { return total + other.plan.rate; };
    const int total = std::accumulate(sockets.begin(), sockets.end(), socket.plan.rate, sum);
    if (sockets.size() >= maxBoards || total > maxTotalRate)
        return nullptr;
    sockets.push_back(std::move(socket));
    return &sockets.back();
}

std::optional<PluggedBoards::Socket>
PluggedBoards::takeOut(const std::function<bool(const Socket &)> &isWanted)
{
    const auto match = std::find_if(sockets.begin(), sockets.end(), isWanted);
    if (match == sockets.end())
        return std::nullopt;
    Socket taken = std::move(*match);
    sockets.erase(match);
    return taken;
}

bool PluggedBoards::setRate(int id, int perSecond)
{
    const auto total = [&](int sum, const Socket &socket) {
        return sum + (socket.plan.id == id ? perSecond : socket.plan.rate);
    };
    if (perSecond < 1 || perSecond > maxRate ||
        std::accumulate(sockets.begin(), sockets.end(), 0, total) > maxTotalRate)
        return false;
    bool found = false;
    for (Socket &socket : sockets) {
        if (socket.plan.id != id)
            continue;
        found = true;
        socket.plan.rate = perSecond;
        if (socket.board)
            socket.board->post(BoardEvent{{}, Rate{perSecond}});
    }
    return found;
}

std::vector<std::shared_ptr<Board>> PluggedBoards::attached() const
{
    std::vector<std::shared_ptr<Board>> found;
    for (const Socket &socket : sockets) {
        if (socket.board)
            found.push_back(socket.board);
    }
    return found;
}

std::vector<std::shared_ptr<Board>> PluggedBoards::takeAttached()
{
    auto found = attached();
    for (Socket &socket : sockets)
        socket.board.reset();
    return found;
}
