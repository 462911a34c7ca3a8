#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "recordreader.h"

namespace decoding {

enum class TimeStyle
{
    Relative, ///< seconds since the first packet
    Delta,    ///< seconds since the packet before that is shown
    Utc,      ///< 2026-11-22T07:05:01.123456789Z
    Local,    ///< 2026-11-22T08:05:01.123456789+01:00
    Epoch,    ///< seconds since 1970-01-01 UTC
};

/// "2026-11-22T07:05:01.123456789Z"
std::string utcText(std::uint64_t ns);

/// Tells the times of packets. Clocks stop in suspend and may be set: utc and local times go by the last
/// status packet of their session, the others by the packet's stamp.
class Times
{
public:
    explicit Times(TimeStyle chosen)
        : style(chosen)
    {
    }

    /// To be called for each packet of a file, in order.
    void follow(const capture::Record &record);
    /// Since the first packet.
    double secondsOf(const capture::Record &record) const;
    /// Local time of day in milliseconds.
    int timeOfDayMs(const capture::Record &record) const;
    /// To be called for each packet that is shown, in order.
    std::string textOf(const capture::Record &record);

private:
    struct Clock
    {
        std::int64_t wallOffsetNs = 0; ///< of the wall clock from the stamps
        std::int32_t localOffsetSeconds = 0;
    };

    Clock clockOf(const capture::Record &record) const;

    std::optional<std::uint64_t> first;
    std::optional<std::uint64_t> lastShown;
    std::map<std::uint32_t, Clock> clocks; ///< by session
    TimeStyle style;
};

} // namespace decoding
