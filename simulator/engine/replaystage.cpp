#include <algorithm>
#include <cstdio>

#include "library.h"

// What a replay does to the library.

std::atomic<bool> Library::replaying{false};

bool Library::arrange(const Player &player, const std::vector<BoardHistory::Present> &present)
{
    bool differs = false;
    CallbackThreads leaving;
    locked([&](State &now) {
        if (now.player.get() != &player)
            return;
        const auto idsNow = [&now] {
            std::vector<int> ids;
            for (const Socket &socket : now.plugged.all())
                ids.push_back(socket.plan.id);
            return ids;
        };
        const std::vector<int> before = idsNow();
        for (const Socket &gone : now.plugged.arrange(present)) {
            if (gone.board)
                leaving.push_back(gone.board);
        }
        differs = idsNow() != before;
        for (std::vector<Socket> *list : {&now.plugged.all(), &now.plugged.departed()}) {
            for (Socket &socket : *list) {
                if (now.attachment && !socket.board)
                    power(socket);
            }
        }
    });
    endingThreads.end(leaving);
    return differs;
}

void Library::notify(const Player &player)
{
    const auto current =
        locked([&](State &now) { return now.player.get() == &player ? now.attachment : nullptr; });
    if (current)
        current->notifyNow();
}

std::shared_ptr<Board> Library::boardOf(const Player &player, int id)
{
    return locked([&](State &now) -> std::shared_ptr<Board> {
        if (now.player.get() != &player)
            return nullptr;
        for (const std::vector<Socket> *list : {&now.plugged.all(), &now.plugged.departed()}) {
            for (const Socket &socket : *list) {
                if (socket.plan.id == id)
                    return socket.board;
            }
        }
        return nullptr;
    });
}

std::vector<std::shared_ptr<Board>> Library::boardsOf(const Player &player)
{
    return locked([&](State &now) {
        std::vector<std::shared_ptr<Board>> found;
        for (const Socket &socket : now.plugged.all()) {
            if (socket.board && now.player.get() == &player)
                found.push_back(socket.board);
        }
        return found;
    });
}

void Library::say(const std::string &line)
{
    std::fputs((line + '\n').c_str(), stderr);
}
