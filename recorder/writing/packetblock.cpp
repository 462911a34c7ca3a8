#include "packetblock.h"

#include "pcapng.h"

namespace recorder {

namespace {

// Of an enhanced packet.
constexpr std::size_t interfaceOffset = 8;
constexpr std::size_t highTimeOffset = 12;
constexpr std::size_t lowTimeOffset = 16;
constexpr std::size_t lengthOffset = 20;
constexpr std::size_t dataOffset = 28;

} // namespace

std::uint32_t typeOf(capture::ByteView block)
{
    return capture::integerAt<std::uint32_t>(block, 0);
}

std::optional<PacketBlock> packetOf(capture::ByteView block)
{
    if (typeOf(block) != capture::pcapng::EnhancedPacket)
        return std::nullopt;
    const auto numberAt = [block](std::size_t offset) {
        return capture::integerAt<std::uint32_t>(block, offset);
    };
    const capture::ByteView data = block.from(dataOffset).first(numberAt(lengthOffset));
    return PacketBlock{numberAt(interfaceOffset),
                       std::uint64_t{numberAt(highTimeOffset)} << 32 | numberAt(lowTimeOffset),
                       capture::headerOf(data), data.from(capture::headerSize)};
}

std::string withLink(std::string block, std::uint32_t link)
{
    capture::Header header = capture::headerOf(capture::viewOf(block).from(dataOffset));
    header.link = link;
    std::string bytes;
    append(bytes, header);
    return block.replace(dataOffset, bytes.size(), bytes);
}

} // namespace recorder
