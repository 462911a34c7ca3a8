#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "callcollector.h"
#include "recordreader.h"
#include "statistics.h"
#include "typecollector.h"

namespace statistics {

/// Makes statistics of a capture. Takes 8 bytes for each report and for each call.
/// \code
/// Collector collector;
/// while (reader.next() == capture::pcapng::Event::Packet)
///     collector.follow(reader.record());
/// for (const SessionStatistics &session : collector.take())
///     ...
/// \endcode
class Collector
{
public:
    /// To be called for each packet, in order.
    /// \param isWanted whether it counts; a call's duration counts with the call, wherever its return is
    void follow(const capture::Record &record, bool isWanted = true);

    /// Sessions in the order of their first packets that count. What was collected is gone then.
    std::vector<SessionStatistics> take();

private:
    struct Session
    {
        std::uint32_t number = 0;
        std::map<std::optional<std::int32_t>, std::map<std::string, TypeCollector, std::less<>>> boards;
        CallCollector calls;

        void followReport(const capture::Record &report);
        SessionStatistics take();
    };

    Session &sessionOf(std::uint32_t number);

    std::vector<Session> sessions;
    std::map<std::uint32_t, std::size_t> indices; ///< of sessions
};

} // namespace statistics
