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
        group.length = record.payloadLength;
        group.isNull = header.has(capture::PointerWasNull);
        group.links.assign(1, header.link);
        group.lowest = header.link;
        group.entry = entry;
        group.begin = packets;
        return {};
    }
    const Found found{true, header.link < group.lowest, group.entry};
    if (header.link != capture::lostLink)
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
    const bool isNull = record.header.has(capture::PointerWasNull);
    if (group.begin == 0 || group.isNull != isNull || group.length != record.payloadLength ||
        group.bytes != record.payload.text())
        return false;
    // Any number of listeners have none. Where all have none, each packet may be a report of its own.
    if (link == capture::lostLink)
        return group.lowest != capture::lostLink;
    if (group.links.size() == maxListeners ||
        std::find(group.links.begin(), group.links.end(), link) != group.links.end())
        return false;
    const auto registration = registrations.find(link);
    return registration == registrations.end() || registration->second < group.begin;
}
