#include "simulator/library.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <system_error>

namespace {

constexpr int firstSerialBoard = 5000;
constexpr int highestSerialPort = 255;

} // namespace

Library &Library::instance()
{
    static Library library;
    return library;
}

Library::Library()
{
    readEnvironment();
}

Library::~Library()
{
    detach();
    for (std::thread &thread : retired) {
        // The process may be ending from within a callback, on this very thread.
        if (thread.get_id() == std::this_thread::get_id())
            thread.detach();
        else
            thread.join();
    }
}

int Library::attach()
{
    finish({});
    try {
        const std::lock_guard lock(mutex);
        if (currentNotices)
            return 1;
        currentNotices = std::make_shared<Notices>();
        currentNotices->start();
        power();
        return 1;
    } catch (const std::system_error &) {
        detach();
        return 0;
    }
}

/// Starts the boards and what happens to them.
void Library::power()
{
    standing = {};
    timeline = std::make_shared<Timeline>(
        [this](const Timeline &source, const LibraryEvent &event) { happen(source, event); });
    for (const BoardPlan &plan : plugged)
        addSocket(plan);
    startEvents();
}

void Library::addSocket(const BoardPlan &plan)
{
    auto board = std::make_shared<Board>(plan, tally, [this](const Board &gone) { vanish(gone); });
    board->start();
    tally.know(plan.id);
    sockets.push_back({plan, std::move(board)});
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
    Leaving leaving;
    std::shared_ptr<Notices> notices;
    {
        const std::lock_guard lock(mutex);
        leaving = takeOut();
        notices.swap(currentNotices);
    }
    Threads ending = stop(leaving);
    if (notices)
        ending.push_back(notices->stop());
    finish(std::move(ending));
}

Library::Leaving Library::takeOut()
{
    Leaving leaving;
    leaving.sockets.swap(sockets);
    leaving.timeline.swap(timeline);
    return leaving;
}

Library::Threads Library::stop(const Leaving &leaving)
{
    Threads ending;
    if (leaving.timeline)
        ending.push_back(leaving.timeline->stop());
    for (const Socket &socket : leaving.sockets)
        ending.push_back(socket.board->stop());
    return ending;
}

/// Joins the threads and those put aside before, or puts them aside.
void Library::finish(Threads ending)
{
    {
        const std::lock_guard lock(mutex);
        std::move(ending.begin(), ending.end(), std::back_inserter(retired));
        ending.clear();
        if (!Listeners::insideCallback())
            ending.swap(retired);
    }
    for (std::thread &thread : ending) {
        if (thread.joinable()) // what never started has none
            thread.join();
    }
}

std::vector<std::shared_ptr<Board>> Library::boards() const
{
    const std::lock_guard lock(mutex);
    std::vector<std::shared_ptr<Board>> found;
    for (const Socket &socket : sockets)
        found.push_back(socket.board);
    return found;
}

std::vector<std::shared_ptr<Board>> Library::boardsWith(int id) const
{
    auto found = boards();
    const auto other = [id](const auto &board) { return board->id() != id; };
    found.erase(std::remove_if(found.begin(), found.end(), other), found.end());
    return found;
}

std::shared_ptr<Notices> Library::notices() const
{
    const std::lock_guard lock(mutex);
    return currentNotices;
}

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
