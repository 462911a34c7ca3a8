#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "recordreader.h"

namespace plots {

/// Whether a return tells that its call failed: a negative result of any entry point, and 0 of `orvexAttach`
/// and `orvexEnumDeviceInfo`. What other results mean is the driver library's, and is not interpreted.
bool tellsFailure(const capture::Record &record);

struct FailedCall
{
    std::uint32_t session = 0;
    double seconds = 0; ///< of the return
    std::string text;   ///< orvexSendCommand(1001, "?\r") = -1; without arguments where they are not known
};

/// Calls that failed, in the order of their returns.
class FailedCalls
{
public:
    /// To be called for each packet.
    void follow(const capture::Record &record, double seconds);

    /// The first `maxListed`.
    const std::vector<FailedCall> &calls() const { return all; }
    std::uint64_t countOf(std::uint32_t session) const;

private:
    /// The arguments of calls that have not returned, by session and the low half of the sequence. More
    /// at once than any host makes are not kept.
    std::unordered_map<std::uint64_t, std::string> open;
    std::vector<FailedCall> all;
    std::unordered_map<std::uint32_t, std::uint64_t> counts; ///< by session
};

} // namespace plots
