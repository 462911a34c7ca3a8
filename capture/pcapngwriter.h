#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "bytes.h"

/// The blocks of a pcapng file, each as bytes that can be written in one piece. Little-endian, times in
/// nanoseconds, link type 147. What is too long for a field of the format is cut.
namespace capture::pcapng {

struct SectionInfo
{
    std::string_view comment;
    std::string_view hardware;
    std::string_view operatingSystem;
    std::string_view userApplication;
};

struct PacketInfo
{
    std::uint32_t interface = 0;      ///< number of its description, from 0
    std::uint64_t timeNs = 0;         ///< since 1970-01-01 UTC
    std::uint32_t originalLength = 0; ///< of the data before it was cut
    std::uint32_t flags = 0;          ///< 1 inbound, 2 outbound, 0 neither
    std::uint64_t dropCount = 0;
    std::string_view comment;
};

struct StatisticsInfo
{
    std::uint32_t interface = 0;
    std::uint64_t startNs = 0;
    std::uint64_t endNs = 0;
    std::uint64_t received = 0;
    std::uint64_t dropped = 0;
};

std::string sectionHeader(const SectionInfo &info);
std::string interfaceDescription(std::string_view name, std::string_view description);
std::string enhancedPacket(const PacketInfo &info, ByteView data);
std::string interfaceStatistics(const StatisticsInfo &info);

} // namespace capture::pcapng
