#include "streamstate.h"

#include <algorithm>

#include "pcapngwriter.h"

namespace recorder {

namespace {

/// What a packet has beside its place.
struct NewPacket
{
    capture::Header header;
    std::string payload;
    std::uint32_t interface = 0;
    std::string comment;
};

std::string blockOf(const NewPacket &packet, std::uint64_t stampNs)
{
    std::string data;
    append(data, packet.header);
    data += packet.payload;
    capture::pcapng::PacketInfo info;
    info.interface = packet.interface;
    info.timeNs = stampNs;
    info.comment = packet.comment;
    return capture::pcapng::enhancedPacket(info, capture::viewOf(data));
}

} // namespace

void StreamState::follow(const PacketBlock &packet, bool isNote)
{
    hasPackets = true;
    session = packet.header.session;
    nextSequence = packet.header.sequence + 1;
    stampNs = packet.stampNs;
    lost += packet.header.lost;
    switch (packet.header.kindOf()) {
    case capture::Kind::Report:
        ++reports[packet.header.board].recorded;
        break;
    case capture::Kind::Status:
        followStatus(packet);
        break;
    case capture::Kind::Board:
        followBoard(packet);
        break;
    case capture::Kind::Mark:
        if (isNote)
            note = packet.payload.text();
        break;
    default:
        break;
    }
}

void StreamState::followStatus(const PacketBlock &packet)
{
    const auto status = capture::statusOf(packet.payload);
    if (!status)
        return;
    statusStampNs = packet.stampNs;
    lastStatus = *status;
}

void StreamState::followBoard(const PacketBlock &packet)
{
    const auto change = capture::boardChangeOf(packet.payload);
    if (change && change->state == capture::BoardState::Seen)
        boards[packet.header.board] = {packet.interface, std::string(packet.payload.text())};
    else
        boards.erase(packet.header.board);
}

/// The clocks are those of the moment.
std::string StreamState::status(std::uint64_t atNs) const
{
    const std::uint64_t distance = atNs - statusStampNs;
    capture::Status status = lastStatus;
    status.monotonicNs += distance;
    status.realNs += distance;
    status.bootNs += distance;
    status.boards = counts();
    return payloadOf(status);
}

std::vector<capture::BoardCounts> StreamState::counts() const
{
    std::vector<capture::BoardCounts> all;
    for (const auto &[board, counted] : reports)
        all.push_back({board, counted.recorded + counted.lost, counted.recorded, counted.lost});
    return all;
}

std::vector<std::string> StreamState::beginning(std::uint64_t firstStampNs, std::uint64_t firstSequence) const
{
    if (!hasPackets)
        return {};
    std::vector<NewPacket> packets{{capture::newHeader(capture::Kind::Status), {}, 0, {}}};
    if (note)
        packets.push_back({capture::newHeader(capture::Kind::Mark), *note, 0, *note});
    for (const auto &[id, board] : boards) {
        packets.push_back({capture::newHeader(capture::Kind::Board), board.payload, board.interface, {}});
        packets.back().header.flags = capture::BoardIsValid;
        packets.back().header.board = id;
    }
    packets.front().payload = status(firstStampNs - packets.size());
    std::vector<std::string> blocks;
    for (std::size_t i = 0; i < packets.size(); ++i) {
        const std::size_t distance = packets.size() - i;
        packets[i].header.session = session;
        packets[i].header.sequence = firstSequence - distance;
        blocks.push_back(blockOf(packets[i], firstStampNs - distance));
    }
    return blocks;
}

std::string StreamState::end(std::uint64_t endStampNs) const
{
    NewPacket packet{capture::newHeader(capture::Kind::End), {}, 0, {}};
    packet.header.session = session;
    packet.header.sequence = nextSequence;
    packet.payload = payloadOf(capture::End{capture::EndReason::Slice, 0, counts(), 0, lost});
    return blockOf(packet, std::max(endStampNs, stampNs + 1));
}

} // namespace recorder
