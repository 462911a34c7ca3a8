#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "clocks.h"
#include "consumer.h"
#include "enumeration.h"
#include "header.h"
#include "marking.h"
#include "output.h"
#include "payloads.h"

namespace recorder {

/// Turns what crosses into the packets of a capture. Every packet and every crossing that was lost takes the
/// next number.
class Recording
{
public:
    /// Writes the section and the interface of the library. The output tells when it could not.
    Recording(Output &output, std::uint32_t session, const Clocks &start);

    void write(const ring::Taken &taken);
    /// \param clocks of a moment behind which nothing has been written
    void writeStatus(const Clocks &clocks, const ring::Control &control);
    /// What has been written crossed before it.
    void writeMark(const marking::Mark &mark);
    /// Writes what was collected, in one piece. To be called when nothing is to be collected for a while.
    void flush();
    /// Nothing has crossed up to now that is not written.
    void passTime(std::uint64_t monotonicNs);
    /// The last packet, and the statistics of the interfaces.
    void writeEnd(capture::End end, std::uint64_t lost, const Clocks &clocks, const ring::Control &control);

    /// Time of the last crossing or mark that was written.
    std::uint64_t lastCrossingNs() const { return lastNs; }
    std::uint64_t reports() const { return reportCount; }
    std::uint64_t lost() const { return lostCount; }

private:
    struct Board
    {
        std::uint32_t interface = 0; ///< 0 as long as it has none
        std::int32_t index = -1;     ///< in the library's enumeration; -1 is unknown
        std::uint64_t recorded = 0;
        std::uint64_t unwritten = 0; ///< reports for which the file had no room
    };

    struct OpenCall
    {
        std::uint64_t crossing = 0;
        std::uint64_t sequence = 0;
        std::int32_t argument = 0; ///< the first one
    };

    struct Extras
    {
        std::uint32_t direction = 0; ///< 1 inbound, 2 outbound, 0 neither
        std::uint32_t originalPayloadLength = 0;
        std::string comment;
        std::uint64_t crossing = 0;
    };

    /// A block that is collected, so that it can be taken back.
    struct Block
    {
        capture::Kind kind{};     ///< of a packet
        bool isInterface = false; ///< of a board; otherwise it is a packet
        std::int32_t board = 0;
        std::uint32_t interface = 0; ///< that a packet stands on
        std::uint64_t lost = 0;      ///< that a packet tells
        std::uint32_t thread = 0;
        std::uint64_t crossing = 0; ///< of a call
    };

    struct InterfaceCounts
    {
        std::uint64_t received = 0;
        std::uint64_t dropped = 0; ///< as the packets say
    };

    void writePacket(capture::Header header, const std::string &payload, std::uint64_t monotonicNs,
                     const Extras &extras);
    void writeChanges(const std::vector<Enumeration::Change> &changes, const ring::Taken &cause);
    std::uint32_t interfaceOf(const capture::Header &header);
    void addInterface(std::int32_t id, Board &board);
    void open(const ring::Taken &taken);
    std::optional<OpenCall> close(const ring::Taken &taken);
    std::optional<OpenCall> takeOpenCall(std::uint32_t thread, std::uint64_t crossing);
    void follow(const ring::Taken &taken, const OpenCall &call);
    std::vector<capture::BoardCounts> counts(const ring::Control &control, bool isEnd) const;
    std::uint64_t stampOf(std::uint64_t monotonicNs) const
    {
        return start.realNs + (monotonicNs - start.monotonicNs);
    }
    void addLost(std::uint64_t count);
    void collect(const Block &block, const std::string &bytes);
    void takeBack(const Block &block);

    Output &output;
    std::uint32_t session;
    Clocks start;
    std::string sessionText;
    Enumeration enumeration;
    std::map<std::int32_t, Board> boards;
    std::vector<InterfaceCounts> interfaces;
    std::string collected; ///< blocks that are to be written
    std::vector<std::size_t> collectedSizes;
    std::vector<Block> collectedBlocks;
    /// Calls that have not returned, by thread, the innermost last.
    std::map<std::uint32_t, std::vector<OpenCall>> openCalls;
    std::uint64_t nextSequence = 0;
    std::uint64_t lastNs = 0;
    std::uint64_t lastStamp = 0;
    std::uint64_t pendingLost = 0; ///< since the last packet
    std::uint64_t lostCount = 0;
    std::uint64_t reportCount = 0;
};

} // namespace recorder
