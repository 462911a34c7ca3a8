#include "recordreader.h"

#include <algorithm>

namespace capture {

pcapng::Event RecordReader::next()
{
    while (!isNewer) {
        const pcapng::Event event = reader.next();
        if (onBlock)
            onBlock(reader.block());
        if (event == pcapng::Event::OtherFrame) {
            ++frames;
            ++passed.foreignPackets;
        }
        if (event == pcapng::Event::Other)
            ++passed.otherBlocks;
        if (event == pcapng::Event::End || event == pcapng::Event::Damage)
            return event;
        if (event == pcapng::Event::Packet && take(reader.packet()))
            return event;
    }
    return pcapng::Event::Damage;
}

/// \return false when the packet is passed by, or of a later version
bool RecordReader::take(const pcapng::Packet &packet)
{
    ++frames;
    const bool isOurs = reader.interfaces()[packet.interface].linkType == pcapng::linkTypeUser0;
    switch (isOurs ? troubleOf(packet.data) : HeaderTrouble::Foreign) {
    case HeaderTrouble::Foreign:
        ++passed.foreignPackets;
        return false;
    case HeaderTrouble::BadLength:
        ++passed.cutHeaders;
        return false;
    case HeaderTrouble::NewVersion:
        isNewer = true;
        newer = {reader.offset(), "a packet of a later version of the format"};
        return false;
    case HeaderTrouble::None:
        break;
    }
    last.frame = frames;
    last.offset = reader.offset();
    last.timeNs = packet.timeNs;
    last.header = headerOf(packet.data);
    last.payload = packet.data.from(last.header.headerLength);
    const auto kept = static_cast<std::uint32_t>(packet.data.size);
    last.payloadLength = std::max(packet.originalLength, kept) - last.header.headerLength;
    last.dropCount = packet.dropCount;
    return true;
}

} // namespace capture
