#include "pcapngreader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "timestamps.h"

namespace capture::pcapng {

namespace {

/// Of a block that is read whole. Wireshark and libpcap have the same.
constexpr std::uint32_t maxBlockLength = 16 * 1024 * 1024;

constexpr std::size_t blockStart = 8; ///< type and length

bool isRead(std::uint32_t type)
{
    switch (type) {
    case SectionHeader:
    case InterfaceDescription:
    case EnhancedPacket:
    case ObsoletePacket:
        return true;
    default:
        return false;
    }
}

constexpr char optionsDoNotFit[] = "options that do not fit their block";
constexpr char noSectionHeader[] = "no pcapng file: it does not begin with a section header";

/// \param bytes the first of a file, which may have only some of a section header's
bool mayBeSectionHeader(ByteView bytes)
{
    return std::string_view("\n\r\r\n").substr(0, bytes.size) == bytes.first(4).text();
}

} // namespace

Reader::Reader(int file)
    : buffer(file)
{
}

Event Reader::fail(std::string reason)
{
    isDamaged = true;
    found = {blockOffset, std::move(reason)};
    return Event::Damage;
}

/// What it is that no more can be read.
Event Reader::endOrFailure()
{
    if (buffer.error() != 0)
        return fail(std::strerror(buffer.error()));
    return hasSection || mayBeSectionHeader(buffer.view()) ? Event::End : fail(noSectionHeader);
}

Event Reader::next()
{
    if (isDamaged)
        return Event::Damage;
    if (skipping > 0)
        return skipRest();
    buffer.drop(lastBlock.size);
    blockOffset += blockLength;
    blockLength = 0;
    lastBlock = {};
    if (!buffer.require(blockStart + 4))
        return endOrFailure();
    const bool isSection = integerAt<std::uint32_t>(buffer.view(), 0) == SectionHeader;
    if (isSection && !useByteOrder())
        return fail("a section without its byte-order magic");
    if (!isSection && !hasSection)
        return fail(noSectionHeader);
    const auto type = at<std::uint32_t>(buffer.view(), 0);
    const auto length = at<std::uint32_t>(buffer.view(), 4);
    if (length < blockOverhead || length % 4 != 0 || (length > maxBlockLength && isRead(type)))
        return fail("a block length of " + std::to_string(length));
    if (length > maxBlockLength) {
        blockLength = length;
        skipping = length;
        return skipRest();
    }
    return readBlock(type, length);
}

bool Reader::useByteOrder()
{
    for (const ByteOrder candidate : {ByteOrder::Little, ByteOrder::Big}) {
        if (integerAt<std::uint32_t>(buffer.view(), blockStart, candidate) == byteOrderMagic) {
            order = candidate;
            return true;
        }
    }
    return false;
}

Event Reader::skipRest()
{
    while (skipping > 4) {
        if (!buffer.require(1))
            return endOrFailure();
        const std::size_t count = std::min<std::uint64_t>(skipping - 4, buffer.size());
        buffer.drop(count);
        skipping -= count;
    }
    if (!buffer.require(4))
        return endOrFailure();
    if (at<std::uint32_t>(buffer.view(), 0) != blockLength)
        return fail("a block whose two lengths differ");
    buffer.drop(4);
    skipping = 0;
    return Event::Other;
}

Event Reader::readBlock(std::uint32_t type, std::uint32_t length)
{
    if (!buffer.require(length))
        return endOrFailure();
    const ByteView block = buffer.view().first(length);
    if (at<std::uint32_t>(block, length - 4) != length)
        return fail("a block whose two lengths differ");
    const ByteView body = block.first(length - 4).from(blockStart);
    const Event event = readBody(type, body);
    if (event != Event::Damage) {
        lastBlock = block;
        blockLength = length;
    }
    return event;
}

Event Reader::readBody(std::uint32_t type, ByteView body)
{
    switch (type) {
    case SectionHeader:
        return readSection(body);
    case InterfaceDescription:
        return readInterface(body);
    case EnhancedPacket:
        return readPacket(body, at<std::uint32_t>(body, 0));
    case ObsoletePacket:
        return readPacket(body, at<std::uint16_t>(body, 0));
    case InterfaceStatistics:
        return Event::Statistics;
    case SimplePacket:
    case JournalEntry:
    case SystemEvent:
    case SystemEvent2:
    case LargeSystemEvent2:
    case CustomCopied:
    case CustomNotCopied:
        return Event::OtherFrame;
    default:
        return Event::Other;
    }
}

Event Reader::readSection(ByteView body)
{
    constexpr std::size_t fixed = 16;
    if (body.size < fixed)
        return fail("a section header that is too short");
    const auto major = at<std::uint16_t>(body, 4);
    if (major != 1)
        return fail("a section of version " + std::to_string(major));
    hasSection = true;
    described.clear();
    lastSection = {};
    lastSection.offset = blockOffset;
    const bool fit = readOptions(body.from(fixed), [this](std::uint16_t option, ByteView value) {
        switch (option) {
        case Comment:
            lastSection.comment = value.text();
            break;
        case Hardware:
            lastSection.hardware = value.text();
            break;
        case OperatingSystem:
            lastSection.operatingSystem = value.text();
            break;
        case UserApplication:
            lastSection.userApplication = value.text();
            break;
        }
    });
    return fit ? Event::Section : fail(optionsDoNotFit);
}

Event Reader::readInterface(ByteView body)
{
    constexpr std::size_t fixed = 8;
    if (body.size < fixed)
        return fail("an interface description that is too short");
    Interface interface;
    interface.linkType = at<std::uint16_t>(body, 0);
    const bool fit = readOptions(body.from(fixed), [&](std::uint16_t option, ByteView value) {
        switch (option) {
        case InterfaceName:
            interface.name = value.text();
            break;
        case InterfaceDescriptionText:
            interface.description = value.text();
            break;
        case TimeResolution:
            interface.resolution = at<std::uint8_t>(value, 0);
            break;
        case TimeOffset:
            interface.offsetSeconds = at<std::int64_t>(value, 0);
            break;
        }
    });
    if (!fit)
        return fail(optionsDoNotFit);
    described.push_back(std::move(interface));
    return Event::Interface;
}

Event Reader::readPacket(ByteView body, std::uint32_t interface)
{
    constexpr std::size_t fixed = 20; // in either sort of packet
    const auto captured = at<std::uint32_t>(body, 12);
    if (body.size < fixed || padded(captured) > body.size - fixed)
        return fail("a packet that does not fit its block");
    if (interface >= described.size())
        return fail("a packet of interface " + std::to_string(interface) + ", which is not described");
    lastPacket = {};
    lastPacket.interface = interface;
    const std::uint64_t high = at<std::uint32_t>(body, 4);
    lastPacket.timeNs = nanosecondsOf((high << 32) | at<std::uint32_t>(body, 8),
                                      described[interface].resolution, described[interface].offsetSeconds);
    lastPacket.originalLength = at<std::uint32_t>(body, 16);
    lastPacket.data = body.from(fixed).first(captured);
    const bool fit =
        readOptions(body.from(fixed + padded(captured)), [this](std::uint16_t option, ByteView value) {
            switch (option) {
            case Comment:
                lastPacket.comments.push_back(value.text());
                break;
            case PacketFlags:
                lastPacket.flags = at<std::uint32_t>(value, 0);
                break;
            case DropCount:
                lastPacket.dropCount = at<std::uint64_t>(value, 0);
                break;
            }
        });
    return fit ? Event::Packet : fail(optionsDoNotFit);
}

template <typename Use>
bool Reader::readOptions(ByteView options, Use use) const
{
    while (options.size >= 4) {
        const auto option = at<std::uint16_t>(options, 0);
        const auto length = at<std::uint16_t>(options, 2);
        if (option == EndOfOptions)
            return true;
        options = options.from(4);
        if (padded(length) > options.size)
            return false;
        use(option, options.first(length));
        options = options.from(padded(length));
    }
    return options.size == 0;
}

} // namespace capture::pcapng
