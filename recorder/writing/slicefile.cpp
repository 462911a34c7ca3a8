#include "slicefile.h"

#include <optional>

#include "pcapng.h"
#include "pcapngwriter.h"

namespace recorder {

namespace {

constexpr std::size_t maxCollected = 64 * 1024;

} // namespace

void SliceFile::add(const std::string &block)
{
    if (!error().empty())
        return;
    if (typeOf(capture::viewOf(block)) == capture::pcapng::InterfaceDescription)
        interfaces.emplace_back();
    const std::optional<PacketBlock> packet = packetOf(capture::viewOf(block));
    if (packet)
        count(*packet);
    blocks += packet && isCallElsewhere(packet->header) ? withLink(block, capture::lostLink) : block;
    sizes.push_back(block.size());
    if (blocks.size() >= maxCollected)
        flush();
}

void SliceFile::count(const PacketBlock &packet)
{
    if (firstStampNs == 0)
        firstStampNs = packet.stampNs;
    lastStampNs = packet.stampNs;
    InterfaceCounts &counts = interfaces.at(packet.interface);
    ++counts.received;
    counts.dropped += packet.header.lost;
}

/// Of a return. A link is the low half of a sequence.
bool SliceFile::isCallElsewhere(const capture::Header &header) const
{
    const std::uint32_t distance = static_cast<std::uint32_t>(header.sequence) - header.link;
    return header.kindOf() == capture::Kind::Return && header.link != capture::lostLink &&
           header.sequence - distance < firstSequence;
}

void SliceFile::flush()
{
    if (error().empty() && !sizes.empty())
        file.write(blocks, sizes);
    blocks.clear();
    sizes.clear();
}

void SliceFile::finish()
{
    for (std::size_t i = 0; i < interfaces.size(); ++i) {
        capture::pcapng::StatisticsInfo info;
        info.interface = static_cast<std::uint32_t>(i);
        info.startNs = firstStampNs;
        info.endNs = lastStampNs;
        info.received = interfaces[i].received;
        info.dropped = interfaces[i].dropped;
        add(capture::pcapng::interfaceStatistics(info));
    }
    flush();
    if (file.isOpen())
        file.close();
}

} // namespace recorder
