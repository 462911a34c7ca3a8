#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "recordreader.h"

/// What a call returned when it was recorded.
struct RecordedAnswer
{
    std::size_t position = 0; ///< index of the entry that came next
    std::int64_t timeNs = 0;  ///< on the clock of the entries
    std::int32_t result = 0;
    std::uint8_t flags = 0; ///< of the return
    std::string filledIn;   ///< its payload
};

/// The returns of a capture by call and arguments. Built packet by packet; then any thread may look.
class RecordedAnswers
{
public:
    /// \param position index of the entry that comes next
    void follow(const capture::Record &record, std::size_t position, std::int64_t timeNs);
    /// The last packet has been followed.
    /// \param playedNs gives a recorded time's place on the clock of the entries
    void finish(const std::function<std::int64_t(std::int64_t recordedNs)> &playedNs);

    /// The last answer before a place, or the first behind it; null when there is none.
    /// \param arguments as in a call's payload, without listeners
    /// \param position index of the entry that comes next
    /// \param timeNs how far time has gone towards it
    const RecordedAnswer *find(unsigned call, std::string_view arguments, std::size_t position,
                               std::int64_t timeNs) const;

private:
    void add(const std::string &key, RecordedAnswer answer);

    std::map<std::uint32_t, std::string> open; ///< keys of the calls without a return, by sequence
    std::map<std::string, std::vector<RecordedAnswer>, std::less<>> answers;
};
