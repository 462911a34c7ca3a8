#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "recordreader.h"
#include "textlines.h"

namespace redacting {

/// Packets of one sort, and what becomes of them.
struct Entry
{
    std::uint64_t count = 0;
    std::uint64_t edited = 0; ///< in which something was blanked, whatever had stood there
    std::string blanked;      ///< "x, y"; empty for nothing
    std::string left;
};

/// Blanks in the packets of a capture what the position of a pen follows from. Lengths stay as they are.
class Redactor
{
public:
    /// The packet with its header; what is blanked is zero. One in which something is blanked has the flag
    /// "edited". To be called for each packet, in order.
    std::string redacted(const capture::Record &record);

    /// By what the packets are: "signal1", "text", "orvexWritePacket()", "mark".
    const std::map<std::string, Entry> &entries() const { return summary; }

private:
    struct Session
    {
        std::uint64_t nextSequence = 0;
        /// By board and type of report.
        std::map<std::pair<std::optional<std::int32_t>, std::uint8_t>, TextLines> texts;
    };

    bool blank(const capture::Record &record, std::string &payload);
    bool blankReport(const capture::Record &report, std::string &payload);
    bool blankText(const capture::Record &report, std::string &payload);
    bool blankCall(const capture::Record &record, std::string &payload);
    /// \return isEdited
    bool count(const std::string &name, bool isEdited, const std::string &blanked, const std::string &left);

    std::map<std::uint32_t, Session> sessions;
    std::map<std::string, Entry> summary;
};

} // namespace redacting
