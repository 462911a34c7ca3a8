#include "simulator/library.h"

#include <algorithm>
#include <system_error>

Library &Library::instance()
{
    static Library library;
    return library;
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
        for (Socket &socket : sockets)
            power(socket);
        return 1;
    } catch (const std::system_error &) {
        detach();
        return 0;
    }
}

void Library::power(Socket &socket)
{
    auto board = std::make_shared<Board>(socket.id, socket.rate);
    board->start();
    socket.board = std::move(board);
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
    std::shared_ptr<Notices> notices;
    {
        const std::lock_guard lock(mutex);
        for (Socket &socket : sockets) {
            if (socket.board)
                leaving.push_back(std::move(socket.board));
            socket.board = nullptr;
        }
        notices.swap(currentNotices);
    }
    Threads ending;
    if (notices)
        ending.push_back(notices->stop());
    for (const auto &board : leaving)
        ending.push_back(board->stop());
    finish(std::move(ending));
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
    for (std::thread &thread : ending)
        thread.join();
}

std::vector<std::shared_ptr<Board>> Library::boards() const
{
    const std::lock_guard lock(mutex);
    std::vector<std::shared_ptr<Board>> found;
    for (const Socket &socket : sockets) {
        if (socket.board)
            found.push_back(socket.board);
    }
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

bool Library::plug(int id)
{
    const std::lock_guard lock(mutex);
    if (sockets.size() == mostBoards)
        return false;
    Socket socket{id, initialRate, nullptr};
    if (currentNotices)
        power(socket);
    sockets.push_back(std::move(socket));
    if (currentNotices)
        currentNotices->post();
    return true;
}

bool Library::unplug(int id)
{
    std::shared_ptr<Board> leaving;
    {
        const std::lock_guard lock(mutex);
        const auto match = std::find_if(sockets.begin(), sockets.end(),
                                        [id](const Socket &socket) { return socket.id == id; });
        if (match == sockets.end())
            return false;
        leaving = std::move(match->board);
        sockets.erase(match);
    }
    if (!leaving)
        return true;
    Threads ending;
    ending.push_back(leaving->stop());
    finish(std::move(ending));
    if (const auto current = notices())
        current->post();
    return true;
}

bool Library::setRate(int id, int perSecond)
{
    if (perSecond < 1 || perSecond > highestRate)
        return false;
    const std::lock_guard lock(mutex);
    bool found = false;
    for (Socket &socket : sockets) {
        if (socket.id != id)
            continue;
        found = true;
        socket.rate = perSecond;
        if (socket.board)
            socket.board->setRate(perSecond);
    }
    return found;
}
