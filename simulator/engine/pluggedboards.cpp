#include "pluggedboards.h"

#include <algorithm>
#include <iterator>

void PluggedBoards::use(const Scenario &scenario)
{
    sockets.clear();
    gone.clear();
    for (const BoardPlan &plan : scenario.boards) {
        if (plan.plugged)
            sockets.push_back({plan, nullptr});
    }
}

BoardPlan PluggedBoards::planFor(int id, const Scenario &scenario) const
{
    for (const BoardPlan &plan : scenario.boards) {
        const auto isIt = [&happened = plan.happened](const Socket &socket) {
            return socket.plan.happened == happened;
        };
        if (plan.id == id && std::none_of(sockets.begin(), sockets.end(), isIt))
            return plan;
    }
    return {id, static_cast<std::uint32_t>(id)};
}

PluggedBoards::Socket *PluggedBoards::plug(int id, const Scenario &scenario)
{
    Socket socket{planFor(id, scenario), nullptr};
    int total = socket.plan.rate;
    for (const Socket &other : sockets)
        total += other.plan.rate;
    if (sockets.size() >= maxBoards || total > maxTotalRate)
        return nullptr;
    sockets.push_back(std::move(socket));
    return &sockets.back();
}

std::optional<PluggedBoards::Socket>
PluggedBoards::remove(const std::function<bool(const Socket &)> &isWanted)
{
    const auto match = std::find_if(sockets.begin(), sockets.end(), isWanted);
    if (match == sockets.end())
        return std::nullopt;
    Socket removed = std::move(*match);
    sockets.erase(match);
    return removed;
}

bool PluggedBoards::setRate(int id, int perSecond)
{
    int total = 0;
    for (const Socket &socket : sockets)
        total += socket.plan.id == id ? perSecond : socket.plan.rate;
    if (perSecond < 1 || perSecond > maxRate || total > maxTotalRate)
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

std::vector<PluggedBoards::Socket> PluggedBoards::arrange(const std::vector<BoardHistory::Present> &present)
{
    std::vector<Socket> before = std::move(sockets);
    std::move(gone.begin(), gone.end(), std::back_inserter(before));
    sockets.clear();
    gone.clear();
    for (const BoardHistory::Present &one : present) {
        const auto isIt = [&one](const Socket &socket) { return socket.plan.id == one.board->id; };
        const auto match = std::find_if(before.begin(), before.end(), isIt);
        Socket socket{{one.board->id, 0}, nullptr};
        if (match != before.end()) {
            socket = std::move(*match);
            before.erase(match);
        }
        socket.record = one.board->record;
        (one.isListed ? sockets : gone).push_back(std::move(socket));
    }
    return before;
}

std::vector<std::shared_ptr<Board>> PluggedBoards::attached() const
{
    std::vector<std::shared_ptr<Board>> found;
    for (const std::vector<Socket> *list : {&sockets, &gone}) {
        for (const Socket &socket : *list) {
            if (socket.board)
                found.push_back(socket.board);
        }
    }
    return found;
}

CallbackThreads PluggedBoards::takeAttached()
{
    CallbackThreads taken;
    for (std::vector<Socket> *list : {&sockets, &gone}) {
        for (Socket &socket : *list) {
            if (socket.board)
                taken.push_back(std::exchange(socket.board, nullptr));
        }
    }
    return taken;
}
