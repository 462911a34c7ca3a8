#include "recordreader.h"

#include <algorithm>

namespace capture {

pcapng::Event RecordReader::next()
{
    for (;;) {
        const pcapng::Event event = reader.next();
        if (event == pcapng::Event::End || event == pcapng::Event::Damage)
            return event;
        if (onBlock)
            onBlock(reader.block());
        if (event == pcapng::Event::OtherFrame) {
            ++frames;
            ++passed.foreignPackets;
        }
        if (event == pcapng::Event::Other)
            ++passed.otherBlocks;
        if (event == pcapng::Event::Packet && take(reader.packet()))
            return event;
    }
}

void RecordReader::passBy(HeaderTrouble trouble)
{
    switch (trouble) {
    case HeaderTrouble::Foreign:
        ++passed.foreignPackets;
        break;
    case HeaderTrouble::BadLength:
        ++passed.cutHeaders;
        break;
    case HeaderTrouble::NewVersion:
        if (passed.newVersions++ == 0)
            passed.newVersionOffset = reader.offset();
        break;
    case HeaderTrouble::None:
        break;
    }
    if (onPassedBy)
        onPassedBy(frames, trouble);
}

/// \return false when the packet is passed by
bool RecordReader::take(const pcapng::Packet &packet)
{
    ++frames;
    const bool isOurs = reader.interfaces()[packet.interface].linkType == pcapng::linkTypeUser0;
    const Header header = headerOf(packet.data);
    const HeaderTrouble trouble = isOurs ? troubleOf(header, packet.data.size) : HeaderTrouble::Foreign;
    if (trouble != HeaderTrouble::None) {
        passBy(trouble);
        return false;
    }
    last.frame = frames;
    last.offset = reader.offset();
    last.timeNs = packet.timeNs;
    last.header = header;
    last.payload = packet.data.from(last.header.headerLength);
    const auto kept = static_cast<std::uint32_t>(packet.data.size);
    last.payloadLength = std::max(packet.originalLength, kept) - last.header.headerLength;
    last.dropCount = packet.dropCount;
    return true;
}

} // namespace capture
