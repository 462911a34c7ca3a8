#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "recordreader.h"

/// Finds the reports, or the hot-plug notifications, that several listeners got: packets in a row of one
/// board and thread that are equal but for the listener.
class SeveralListeners
{
public:
    struct Found
    {
        bool isSame = false;   ///< as an earlier packet
        bool isLower = false;  ///< and its listener has the lowest number so far
        std::size_t entry = 0; ///< of the earlier packet
    };

    /// \param entry the index that the packet gets if it is played
    Found follow(const capture::Record &record, std::size_t entry);
    /// A listener that is registered now gets nothing that is under way.
    void registered(std::uint32_t link) { registrations[link] = packets; }

private:
    struct Group
    {
        std::string bytes;
        std::uint32_t length = 0; ///< before it was cut
        bool isNull = false;
        std::vector<std::uint32_t> links;
        std::uint32_t lowest = 0;
        std::size_t entry = 0;
        std::uint64_t begin = 0; ///< number of its first packet
    };

    bool has(const Group &group, const capture::Record &record) const;

    std::unordered_map<std::uint64_t, Group> groups;                ///< the last of each board and thread
    std::unordered_map<std::uint32_t, std::uint64_t> registrations; ///< number of the packet before, by link
    std::uint64_t packets = 0;
};
