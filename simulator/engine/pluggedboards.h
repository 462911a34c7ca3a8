#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "board.h"
#include "boardhistory.h"
#include "scenario.h"

/// Which boards are plugged in, in the order in which they are enumerated. One thread at a time.
class PluggedBoards
{
public:
    struct Socket
    {
        BoardPlan plan;
        std::shared_ptr<Board> board; ///< null while nobody is attached
        std::string record{};         ///< what is known of the device record; empty: the id alone
    };

    /// Those that a scenario has there at first, and nothing else.
    void use(const Scenario &scenario);
    /// Plugs a board in: one that the scenario describes and that isn't there, otherwise any.
    /// \return null when there are 32 already, or they would send too many reports
    Socket *plug(int id, const Scenario &scenario);
    /// Removes the first one that is wanted; nothing when there is none.
    std::optional<Socket> remove(const std::function<bool(const Socket &)> &isWanted);
    /// \return whether there is such a board, and all together don't send too many reports
    bool setRate(int id, int perSecond);

    /// Makes the boards those of a replay; those that stay keep their callbacks.
    /// \return those that are gone
    std::vector<Socket> arrange(const std::vector<BoardHistory::Present> &present);

    std::vector<Socket> &all() { return sockets; }
    /// Those of a replay that still report, and are not enumerated any more.
    std::vector<Socket> &departed() { return gone; }
    /// Those that are attached.
    std::vector<std::shared_ptr<Board>> attached() const;
    /// Detaches all.
    CallbackThreads takeAttached();

private:
    BoardPlan planFor(int id, const Scenario &scenario) const;

    std::vector<Socket> sockets;
    std::vector<Socket> gone;
};
