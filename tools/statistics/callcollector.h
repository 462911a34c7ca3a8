#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "recordreader.h"
#include "statistics.h"

namespace statistics {

/// Collects the calls of a session and pairs each with its return.
class CallCollector
{
public:
    /// \param isWanted whether it counts; its duration does then, too
    void followCall(const capture::Record &call, bool isWanted);
    void followReturn(const capture::Record &returned);
    /// In the order of their numbers. What was collected is gone then.
    std::vector<CallStatistics> take();

private:
    struct Call
    {
        std::uint64_t count = 0;
        std::vector<std::int64_t> durationsNs;
    };

    struct OpenCall
    {
        std::uint32_t thread;
        std::uint32_t number; ///< low half of its sequence
        std::uint64_t timeNs;
        std::uint16_t call;
        bool isWanted;
    };

    std::map<std::uint16_t, Call> calls;
    std::vector<OpenCall> openCalls; ///< the newest last
};

} // namespace statistics
