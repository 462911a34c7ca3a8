#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "losses.h"
#include "packetblock.h"
#include "payloads.h"

namespace recorder {

/// What a recording has told up to some packet, so that a file can begin or end behind it.
class StreamState
{
public:
    /// \param isNote it is what the whole recording begins with
    void follow(const PacketBlock &packet, bool isNote);

    /// To be told before the packet.
    void lose(const BoardLoss &loss) { reports[loss.board].lost += loss.count; }

    /// Whether nothing was told.
    bool isEmpty() const { return !hasPackets; }
    std::uint64_t lastStampNs() const { return stampNs; }

    /// Blocks that a file begins with, which leaves out all of this: a status, the note, and the boards that
    /// are there. They have the stamps and the sequences that lie right before those of the file's first
    /// packet.
    std::vector<std::string> beginning(std::uint64_t firstStampNs, std::uint64_t firstSequence) const;
    /// The end packet of a file behind which the recording goes on.
    std::string end(std::uint64_t endStampNs) const;

private:
    struct Board
    {
        std::uint32_t interface = 0;
        std::string payload; ///< of the packet that told that it was seen
    };

    std::vector<capture::BoardCounts> counts() const;
    std::string status(std::uint64_t atNs) const;
    void followStatus(const PacketBlock &packet);
    void followBoard(const PacketBlock &packet);

    bool hasPackets = false;
    std::uint32_t session = 0;
    std::uint64_t nextSequence = 0;
    std::uint64_t stampNs = 0;
    std::uint64_t lost = 0;
    std::uint64_t statusStampNs = 0;
    capture::Status lastStatus; ///< without its boards
    std::optional<std::string> note;
    std::map<std::int32_t, Board> boards; ///< that are there
    std::map<std::int32_t, capture::BoardCounts> reports;
};

} // namespace recorder
