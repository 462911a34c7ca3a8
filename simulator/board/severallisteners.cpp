#include "severallisteners.h"

#include <algorithm>

constexpr std::size_t maxListeners = 256; // at once, in a capture

SeveralListeners::Found SeveralListeners::follow(const capture::Record &record, std::size_t entry)
{
    ++packets;
    const capture::Header &header = record.header;
    const std::uint64_t key = std::uint64_t{static_cast<std::uint32_t>(header.board)} << 32 | header.thread;
    Group &group = groups[key];
    if (!has(group, record)) {
        group.bytes = record.payload.text();
        group.links.assign(1, header.link);
        group.lowest = header.link;
        group.entry = entry;
        group.begin = packets;
        return {};
    }
    const Found found{true, header.link < group.lowest, group.entry};
    group.links.push_back(header.link);
    if (found.isLower) {
        group.lowest = header.link;
        group.entry = entry;
    }
    return found;
}

bool SeveralListeners::has(const Group &group, const capture::Record &record) const
{
    const std::uint32_t link = record.header.link;
    if (group.begin == 0 || group.links.size() == maxListeners || group.bytes != record.payload.text() ||
        std::find(group.links.begin(), group.links.end(), link) != group.links.end())
        return false;
    const auto registration = registrations.find(link);
    return registration == registrations.end() || registration->second < group.begin;
}
