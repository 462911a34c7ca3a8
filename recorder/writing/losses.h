#pragma once

#include <cstdint>
#include <vector>

#include "header.h"
#include "layout.h"

namespace recorder {

/// Reports of a board that were lost right before a packet.
struct BoardLoss
{
    std::uint64_t sequence; ///< of the packet
    std::int32_t board;
    std::uint64_t count;
};

/// Tells of which boards the reports were that a packet says are lost. The ring counts them board by board,
/// and not where they were lost: a packet's are shared out in proportion to what these counts have more than
/// the packets before it. This is exact for one board, and for several in sum, and for each once the ring has
/// been empty; as long as only reports are lost.
class Losses
{
public:
    explicit Losses(const ring::Control &counted)
        : control(counted)
        , told(ring::boardSlotCount)
    {
    }

    /// Those right before the next packet. What no board has counted is no report.
    std::vector<BoardLoss> before(const capture::Header &packet);

private:
    const ring::Control &control;
    std::vector<std::uint64_t> told; ///< of the boards, as the ring has them
};

} // namespace recorder
