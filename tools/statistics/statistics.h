#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fields.h"
#include "recordreader.h"

/// Counts, rates, gaps and durations of a capture.
namespace statistics {

/// Of several durations in nanoseconds. Median and 99th percentile are by nearest rank: of n durations in
/// ascending order the one at n / 2 and at 99 n / 100, rounded up and counted from 1, so both have occurred.
/// A duration is negative only where the times of a file do not ascend.
struct Spread
{
    std::uint64_t count = 0; ///< without any, the rest is 0
    std::int64_t minNs = 0;
    std::int64_t medianNs = 0;
    std::int64_t p99Ns = 0;
    std::int64_t maxNs = 0;
};

/// Of one field in the reports that have it.
struct FieldStatistics
{
    const decoding::FieldInfo *field = nullptr; ///< its name, label and unit
    std::uint64_t count = 0;                    ///< at least 1
    double min = 0;
    double mean = 0;
    double max = 0;
};

/// Of a board's reports of one type.
struct TypeStatistics
{
    std::string type; ///< as decoding::reportTypeOf() has it
    std::uint64_t count = 0;
    double perSecond = 0; ///< between the first and the last; 0 for fewer than two
    Spread gaps;          ///< times between two that follow each other, whatever was lost between them
    Spread jitter;        ///< absolute differences of each gap from the median gap
    std::vector<FieldStatistics> fields;
};

struct BoardStatistics
{
    std::optional<std::int32_t> board; ///< none for reports that tell no board
    std::vector<TypeStatistics> types; ///< by name
};

struct CallStatistics
{
    std::string name; ///< "orvexSendCommand", or "call 99"
    std::uint64_t count = 0;
    Spread durations; ///< from the call to its return, of those whose return is there
};

struct SessionStatistics
{
    std::uint32_t session = 0;
    std::vector<BoardStatistics> boards; ///< by id
    std::vector<CallStatistics> calls;   ///< in the order of their numbers
};

} // namespace statistics
