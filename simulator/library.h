#pragma once

#include "simulator/board.h"
#include "simulator/callerlock.h"
#include "simulator/notices.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

inline constexpr int firstBoardId = 1001;
inline constexpr std::size_t mostBoards = 32;

/// The library's one state: the boards that are plugged in and, while somebody is attached, their threads.
///
/// Which boards are plugged in outlives a detach. Threads are never joined under the lock, nor from within a
/// callback: there they are put aside, for the next attach or detach or the end of the library to join.
class Library
{
public:
    static Library &instance();
    ~Library();

    /// \return 1, or 0 when no thread could be started
    int attach();
    void detach();

    std::vector<std::shared_ptr<Board>> boards() const;
    std::vector<std::shared_ptr<Board>> boardsWith(int id) const;
    /// Null while nobody is attached.
    std::shared_ptr<Notices> notices() const;

    bool plug(int id);
    bool unplug(int id);
    bool setRate(int id, int perSecond);

    CallerLock callerLock;
    std::atomic<int> serialPort{-1}; ///< -1 while nothing is connected
    std::atomic<int> serialStartupMode{0};

private:
    struct Socket
    {
        int id;
        int rate;
        std::shared_ptr<Board> board; ///< null while nobody is attached
    };
    using Threads = std::vector<std::thread>;

    Library() = default;
    static void power(Socket &socket);
    void letGo();
    void finish(Threads ending);

    mutable std::mutex mutex; ///< of everything below
    std::condition_variable detached;
    std::vector<Socket> sockets{{firstBoardId, initialRate, nullptr}};
    std::shared_ptr<Notices> currentNotices;
    Threads retired;   ///< told to end, and not yet joined
    int detaching = 0; ///< detaches under way
};
