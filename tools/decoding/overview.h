#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "payloads.h"
#include "recordreader.h"

namespace decoding {

/// What one session of a capture has.
struct SessionOverview
{
    using Counts = std::map<std::string, std::uint64_t, std::less<>>; ///< by name

    struct Board
    {
        std::uint64_t reports = 0;
        std::uint64_t firstNs = 0; ///< stamp of the first report
        std::uint64_t lastNs = 0;
        std::uint64_t lost = 0; ///< reports, as the last status or the end tells
        Counts types;           ///< reports by the name of their type
    };

    struct Call
    {
        std::uint32_t number; ///< low half of its sequence
        std::uint64_t gaps;   ///< of the sequence, before it
        std::string text;
    };

    std::uint32_t session = 0;
    std::uint64_t packets = 0;
    std::uint64_t firstNs = 0;
    std::uint64_t lastNs = 0;
    std::uint64_t lost = 0;
    std::uint64_t nextSequence = 0;
    std::uint64_t gaps = 0;   ///< of the sequence: packets that were lost or taken out
    Counts kinds;             ///< packets by the name of their kind
    std::uint64_t cut = 0;    ///< packets of which bytes are missing
    std::uint64_t edited = 0; ///< packets that are not as they were recorded
    /// None is that of reports that tell no board.
    std::map<std::optional<std::int32_t>, Board> boards;
    std::optional<capture::End> end;
    /// Those whose return is not there, by thread, inner ones last.
    std::map<std::uint32_t, std::vector<Call>> openCalls;
    std::vector<std::string> notes;

    /// Whether it is certain of an open call: nothing is missing behind it up to the end.
    bool hasNeverReturned(const Call &call) const;
    /// Reports a second between the first and the last; 0 for fewer than two.
    static double rateOf(const Board &board);
    /// "clean, exit status 0", "signal 9", "unknown", "a slice", "cut off" or "no clean end".
    /// \param isCutOff whether the file ends within a block
    std::string endText(bool isCutOff) const;
};

/// Sessions in the order of their first packets.
class Overview
{
public:
    void follow(const capture::Record &record);
    const std::vector<SessionOverview> &sessions() const { return all; }

private:
    SessionOverview &sessionOf(const capture::Record &record);

    std::vector<SessionOverview> all;
    std::map<std::uint32_t, std::size_t> indices; ///< of all, by session
};

} // namespace decoding
