#include "library.h"

#include <algorithm>
#include <iterator>
#include <system_error>

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
    timeline = std::make_shared<Timeline>(
        [this](const Timeline &source, const LibraryEvent &event) { happen(source, event); });
    for (Socket &socket : sockets)
        powerBoard(socket);
    startEvents();
}

void Library::powerBoard(Socket &socket)
{
    socket.board = std::make_shared<Board>(socket.plan, tally, [this](const Board &gone) { vanish(gone); });
    socket.board->start();
    tally.know(socket.plan.id);
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
    for (Socket &socket : sockets) {
        if (socket.board)
            leaving.boards.push_back(std::move(socket.board));
    }
    leaving.timeline.swap(timeline);
    return leaving;
}

Library::Threads Library::stop(const Leaving &leaving)
{
    Threads ending;
    if (leaving.timeline)
        ending.push_back(leaving.timeline->stop());
    for (const auto &board : leaving.boards)
        ending.push_back(board->stop());
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
