#include "simulator/library.h"

#include <algorithm>
#include <numeric>

// Which boards are plugged in.

namespace {

constexpr int firstSerialBoard = 5000;
constexpr int highestSerialPort = 255;

} // namespace

std::vector<int> Library::ids() const
{
    const std::lock_guard lock(mutex);
    std::vector<int> found;
    if (currentNotices)
        for (const Socket &socket : sockets)
            found.push_back(socket.plan.id);
    else
        for (const BoardPlan &plan : plugged)
            found.push_back(plan.id);
    return found;
}

bool Library::plug(int id)
{
    const std::lock_guard lock(mutex);
    return plugLocked(id, true);
}

/// \param lasting beyond the next detach
bool Library::plugLocked(int id, bool lasting)
{
    const BoardPlan plan = planFor(id);
    const auto sum = [](int total, const BoardPlan &other) { return total + other.rate; };
    const int total = std::accumulate(plugged.begin(), plugged.end(), plan.rate, sum);
    if (plugged.size() >= mostBoards || sockets.size() >= mostBoards || total > highestTotalRate)
        return false;
    if (currentNotices) {
        addSocket(plan);
        currentNotices->post();
    }
    if (lasting)
        plugged.push_back(plan);
    return true;
}

bool Library::unplug(int id)
{
    bool known = false;
    {
        const std::lock_guard lock(mutex);
        const auto match = std::find_if(plugged.begin(), plugged.end(),
                                        [id](const BoardPlan &plan) { return plan.id == id; });
        known = match != plugged.end();
        if (known)
            plugged.erase(match);
    }
    Threads ending;
    ending.push_back(pullOut(id));
    known = known || ending.front().joinable();
    finish(std::move(ending));
    return known;
}

/// Stops the first board with this id and notifies.
/// \return its thread; none when there is no such board
std::thread Library::pullOut(int id)
{
    std::shared_ptr<Board> leaving;
    {
        const std::lock_guard lock(mutex);
        const auto match = std::find_if(sockets.begin(), sockets.end(),
                                        [id](const Socket &socket) { return socket.plan.id == id; });
        if (match == sockets.end())
            return {};
        leaving = std::move(match->board);
        sockets.erase(match);
    }
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
    const auto total = [&](int sum, const BoardPlan &plan) {
        return sum + (plan.id == id ? perSecond : plan.rate);
    };
    if (std::accumulate(plugged.begin(), plugged.end(), 0, total) > highestTotalRate)
        return false;
    bool found = false;
    for (BoardPlan &plan : plugged) {
        if (plan.id == id) {
            plan.rate = perSecond;
            found = true;
        }
    }
    for (const Socket &socket : sockets) {
        if (socket.plan.id == id) {
            socket.board->happen({{}, BoardEvent::What::Rate, perSecond});
            found = true;
        }
    }
    return found;
}

bool Library::connectSerial(int port)
{
    const std::lock_guard lock(mutex);
    if (port < 0 || port > highestSerialPort || serialPort >= 0 || !plugLocked(firstSerialBoard + port, true))
        return false;
    serialPort = port;
    return true;
}

bool Library::disconnectSerial()
{
    int port = -1;
    {
        const std::lock_guard lock(mutex);
        std::swap(port, serialPort);
    }
    return port >= 0 && (unplug(firstSerialBoard + port), true);
}

int Library::connectedSerial() const
{
    const std::lock_guard lock(mutex);
    return serialPort;
}
