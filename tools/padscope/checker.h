#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "capturefiles.h"
#include "payloads.h"

namespace padscope {

/// What must hold from packet to packet of a session.
class Checker
{
public:
    /// Both must outlive this.
    Checker(const InputFile &input, const capture::RecordReader &reader);

    /// To be called for each packet of a capture, in order.
    void follow(const capture::Record &record);
    /// To be called for each packet that the reader passes by.
    void followPassedBy(std::uint64_t frame, capture::HeaderTrouble trouble);
    /// To be called behind the last packet. Prints how many faults there are beyond those that were printed.
    void finish() const;

    std::uint64_t faults() const { return count; }

private:
    struct Session
    {
        bool hasPackets = false;
        bool hasGaps = false; ///< somebody took packets out, which is no fault
        bool hasEnd = false;
        std::uint64_t timeNs = 0;
        std::uint64_t sequence = 0;
        std::uint64_t lost = 0;
        std::map<std::int32_t, std::uint64_t> reports; ///< by board
        /// Entry points of the calls that have not returned, by the low half of their sequence.
        std::map<std::uint32_t, std::uint16_t> openCalls;
    };

    void reportFault(const capture::Record &record, const std::string &what);
    void reportFault(std::uint64_t offset, std::uint64_t frame, const std::string &what);
    void checkOrder(const capture::Record &record, Session &session);
    void checkSequence(const capture::Record &record, Session &session);
    void checkHeader(const capture::Record &record);
    void checkKind(const capture::Record &record, Session &session);
    void checkReturn(const capture::Record &record, Session &session);
    void checkStatus(const capture::Record &record, const Session &session);
    void checkEnd(const capture::Record &record, const Session &session);
    bool hasAllCounts(const capture::Record &record, std::uint32_t missing);
    void compareReports(const capture::Record &record, const Session &session,
                        const capture::BoardCounts &counts);
    void findUncounted(const capture::Record &record, const Session &session,
                       const std::vector<capture::BoardCounts> &boards);

    const InputFile &input;
    const capture::RecordReader &reader;
    std::map<std::uint32_t, Session> sessions;
    std::uint64_t count = 0;
};

} // namespace padscope
