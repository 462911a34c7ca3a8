#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "recordreader.h"

/// What a call returned when it was recorded.
struct RecordedAnswer
{
    std::size_t position = 0; ///< index of the entry that came next
    std::int32_t result = 0;
    std::uint8_t flags = 0; ///< of the return
    std::string filledIn;   ///< its payload
};

/// The returns of a capture by call and arguments. Built packet by packet; then any thread may look.
class RecordedAnswers
{
public:
    /// \param position index of the entry that comes next
    void follow(const capture::Record &record, std::size_t position);
    /// The last packet has been followed.
    void finish() { open.clear(); }

    /// The last answer before a position, or the first behind it; null when there is none.
    /// \param arguments as in a call's payload, without listeners
    const RecordedAnswer *find(unsigned call, std::string_view arguments, std::size_t position) const;

private:
    void add(const std::string &key, RecordedAnswer answer);

    std::map<std::uint32_t, std::string> open; ///< keys of the calls without a return, by sequence
    std::map<std::string, std::vector<RecordedAnswer>, std::less<>> answers;
};
