#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct Replay;

/// Where the clock of a replay may start: what came last before the first report or notification. In ns since
/// the session's first packet; -1 where that was not recorded.
struct ReplayBegin
{
    std::int64_t registrationNs = -1; ///< of a callback
    std::int64_t attachNs = -1;
};

/// What of a session is played, and when: recorded times become those of the replay's clock.
class ReplayTimes
{
public:
    ReplayTimes(Replay &replay_, const ReplayBegin &start_)
        : replay(replay_)
        , start(start_)
    {
    }

    /// Leaves out what is before `from`, or not before `to`.
    void cut();
    /// Of what is left.
    void set();

private:
    void findEnds();
    bool isAwaited() const;
    std::int64_t beginNs() const;
    void shortenGaps(std::int64_t begin);
    std::int64_t playedNs(std::int64_t recordedNs) const;

    /// What is left out of a long pause, in recorded time.
    struct LeftOut
    {
        std::int64_t begin;
        std::int64_t end;
        std::int64_t before; ///< what is left out before it
    };

    Replay &replay;
    const ReplayBegin start;
    // Of what is played, without commands, which move neither the zero nor the end.
    std::size_t firstHeard = 0;
    std::size_t endHeard = 0;     ///< behind the last; firstHeard when there is none
    bool isFirstOfAll = true;     ///< none is left out before it
    std::vector<LeftOut> leftOut; ///< in order
};
