#include "pcapngwriter.h"

#include <algorithm>

#include "pcapng.h"

namespace capture::pcapng {

namespace {

constexpr std::size_t maxOptionLength = 65535;

void pad(std::string &bytes)
{
    bytes.resize(padded(bytes.size()));
}

/// Does nothing for an empty value.
void appendOption(std::string &body, Option option, std::string_view value)
{
    if (value.empty())
        return;
    value = value.substr(0, maxOptionLength);
    append(body, static_cast<std::uint16_t>(option));
    append(body, static_cast<std::uint16_t>(value.size()));
    body += value;
    pad(body);
}

template <typename Integer>
void appendNumber(std::string &body, Option option, Integer value)
{
    std::string bytes;
    append(bytes, value);
    appendOption(body, option, bytes);
}

/// High half first, both halves little-endian, as the format has times.
void appendTime(std::string &bytes, std::uint64_t timeNs)
{
    append(bytes, static_cast<std::uint32_t>(timeNs >> 32));
    append(bytes, static_cast<std::uint32_t>(timeNs));
}

void appendTimeOption(std::string &body, Option option, std::uint64_t timeNs)
{
    std::string bytes;
    appendTime(bytes, timeNs);
    appendOption(body, option, bytes);
}

std::string block(BlockType type, const std::string &body, bool hasOptions)
{
    const std::size_t end = hasOptions ? 4 : 0;
    const auto length = static_cast<std::uint32_t>(body.size() + end + blockOverhead);
    std::string bytes;
    bytes.reserve(length);
    append(bytes, static_cast<std::uint32_t>(type));
    append(bytes, length);
    bytes += body;
    bytes.resize(bytes.size() + end); // the end of the options is four zeros
    append(bytes, length);
    return bytes;
}

} // namespace

std::string sectionHeader(const SectionInfo &info)
{
    std::string body;
    append(body, byteOrderMagic);
    append(body, std::uint16_t{1});
    append(body, std::uint16_t{0});
    append(body, std::int64_t{-1}); // a section of any length
    const std::size_t fixed = body.size();
    appendOption(body, Comment, info.comment);
    appendOption(body, Hardware, info.hardware);
    appendOption(body, OperatingSystem, info.operatingSystem);
    appendOption(body, UserApplication, info.userApplication);
    return block(SectionHeader, body, body.size() > fixed);
}

std::string interfaceDescription(std::string_view name, std::string_view description)
{
    std::string body;
    append(body, linkTypeUser0);
    append(body, std::uint16_t{0});
    append(body, snapLength);
    appendOption(body, InterfaceName, name);
    appendOption(body, InterfaceDescriptionText, description);
    appendNumber(body, TimeResolution, nanoseconds);
    return block(InterfaceDescription, body, true);
}

std::string enhancedPacket(const PacketInfo &info, ByteView data)
{
    data = data.first(snapLength);
    std::string body;
    append(body, info.interface);
    appendTime(body, info.timeNs);
    append(body, static_cast<std::uint32_t>(data.size));
    append(body, std::max(info.originalLength, static_cast<std::uint32_t>(data.size)));
    body += data.text();
    pad(body);
    const std::size_t fixed = body.size();
    appendOption(body, Comment, info.comment);
    if (info.flags != 0)
        appendNumber(body, PacketFlags, info.flags);
    if (info.dropCount != 0)
        appendNumber(body, DropCount, info.dropCount);
    return block(EnhancedPacket, body, body.size() > fixed);
}

std::string interfaceStatistics(const StatisticsInfo &info)
{
    std::string body;
    append(body, info.interface);
    appendTime(body, info.endNs);
    appendTimeOption(body, StatisticsStart, info.startNs);
    appendTimeOption(body, StatisticsEnd, info.endNs);
    appendNumber(body, StatisticsReceived, info.received);
    appendNumber(body, StatisticsDropped, info.dropped);
    return block(InterfaceStatistics, body, true);
}

} // namespace capture::pcapng
