#pragma once

#include <cstddef>
#include <cstdint>

/// Numbers of the pcapng format, draft-ietf-opsawg-pcapng.
namespace capture::pcapng {

enum BlockType : std::uint32_t
{
    InterfaceDescription = 1,
    ObsoletePacket = 2,
    SimplePacket = 3,
    InterfaceStatistics = 5,
    EnhancedPacket = 6,
    JournalEntry = 9,
    SystemEvent = 0x204,
    SystemEvent2 = 0x216,
    LargeSystemEvent2 = 0x221,
    CustomCopied = 0x00000BAD, ///< by a tool that rewrites the file
    CustomNotCopied = 0x40000BAD,
    SectionHeader = 0x0A0D0D0A, ///< reads the same in either byte order
};

enum Option : std::uint16_t
{
    EndOfOptions = 0,
    Comment = 1,

    Hardware = 2,
    OperatingSystem = 3,
    UserApplication = 4,

    InterfaceName = 2,
    InterfaceDescriptionText = 3,
    TimeResolution = 9,
    TimeOffset = 14,

    PacketFlags = 2,
    DropCount = 4,

    StatisticsStart = 2,
    StatisticsEnd = 3,
    StatisticsReceived = 4,
    StatisticsDropped = 5,
};

inline constexpr std::uint32_t byteOrderMagic = 0x1A2B3C4D;
inline constexpr std::size_t blockOverhead = 12; ///< type, length, and length again
inline constexpr std::uint16_t linkTypeUser0 = 147;
inline constexpr std::uint32_t snapLength = 65535;
inline constexpr std::uint8_t nanoseconds = 9; ///< a time resolution of 10^-9 s

} // namespace capture::pcapng
