#include "pluggedboards.h"

#include <algorithm>
#include <map>

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
    std::multimap<int, Socket> before; // of equal ids, the first comes first
    for (std::vector<Socket> *list : {&sockets, &gone}) {
        for (Socket &socket : *list)
            before.emplace(socket.plan.id, std::move(socket));
        list->clear();
    }
    for (const BoardHistory::Present &one : present) {
        const auto match = before.lower_bound(one.board->id);
        Socket socket{{one.board->id, 0}, nullptr};
        if (match != before.end() && match->first == one.board->id) {
            socket = std::move(match->second);
            before.erase(match);
        }
        socket.record = one.board->record;
        (one.isListed ? sockets : gone).push_back(std::move(socket));
    }
    std::vector<Socket> leaving;
    for (auto &[id, socket] : before)
        leaving.push_back(std::move(socket));
    return leaving;
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
