#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace recorder {

/// Which boards the host has seen, derived from what it asked the library. The library itself never says that
/// a board has gone: one has when a pass over all indices, each of them answered, lacks it.
class Enumeration
{
public:
    struct Change
    {
        bool isGone;
        std::int32_t board;
        std::int32_t index; ///< -1 is unknown
        std::string record; ///< the library's; empty when it is unknown
    };

    /// The library has told its count of boards, which begins a pass.
    std::vector<Change> countReturned(std::int32_t count);
    /// It has filled in the record of a board.
    /// \param record empty when it has failed, or filled in nothing that can be read
    std::vector<Change> recordReturned(std::int32_t index, const std::string &record);
    /// A report came.
    std::vector<Change> reported(std::int32_t board);

    /// The change could not be written: it is told again when the board reports or its record is read.
    void forget(std::int32_t board) { known.erase(board); }

    bool isKnown(std::int32_t board) const { return known.count(board) > 0; }

private:
    std::vector<Change> endPass();

    std::map<std::int32_t, std::string> known;  ///< records of the boards that are there
    std::map<std::int32_t, std::string> places; ///< records by index, as they were told
    std::vector<std::int32_t> pass;             ///< ids of the pass so far
    std::int32_t passCount = -1;                ///< how many it will have; -1 outside a pass
};

} // namespace recorder
