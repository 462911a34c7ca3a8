#pragma once

#include <cstdint>
#include <string>

#include "fieldrules.h"
#include "recordreader.h"

namespace comparing {

/// What is compared of a packet of a capture.
struct Packet
{
    std::int64_t timeNs = 0;  ///< since the file's first packet
    std::uint64_t hash = 0;   ///< equal for packets that are equal under the rules
    std::uint32_t length = 0; ///< of the payload before it was cut
    std::int32_t result = 0;  ///< of a return; 0 without one
    std::uint16_t call = 0;
    capture::Kind kind = capture::Kind::Report;
    std::uint8_t flags = 0; ///< those that tell about the payload and the result
    std::string payload;
};

/// \param board the number that the board of the packet has in A, which a call's argument is changed to
Packet packetOf(const capture::Record &record, std::int64_t timeNs, std::int32_t board,
                const FieldRules &rules);

/// The same to the last bit.
bool areIdentical(const Packet &a, const Packet &b);

/// The packet as decoding::fieldsOf() takes it. Its bytes are the packet's.
capture::Record recordOf(const Packet &packet);

/// "SignalReport 1", "unknown", "call orvexSendCommand", "return orvexSendCommand", "hotplug"
std::string typeOf(const Packet &packet);

} // namespace comparing
