#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "marking.h"

namespace marking {

/// Where a recorder takes marks that are asked for by the same user. It never waits for who asks.
class MarkInbox
{
public:
    /// \param session random
    explicit MarkInbox(std::uint32_t session);
    ~MarkInbox();
    MarkInbox(const MarkInbox &) = delete;
    MarkInbox &operator=(const MarkInbox &) = delete;

    /// Readable when take() has something to do; -1 when there is no such socket, and no mark comes.
    int descriptor() const { return epoll; }

    /// Answers the next request. \return nothing when there is none
    std::optional<Mark> take();

    /// Gives a mark its number, which is its text if it has none: "mark 3".
    Mark numbered(const Mark &mark);

private:
    void admit();
    std::optional<Mark> read(int connection);
    void drop(int connection);

    int epoll = -1;
    int listener = -1;
    std::deque<int> connections; ///< that have asked for nothing yet
    std::uint32_t count = 0;     ///< of marks
};

} // namespace marking
