#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "header.h"

namespace recorder {

/// A packet of a recording, as its block has it.
struct PacketBlock
{
    std::uint32_t interface = 0;
    std::uint64_t stampNs = 0; ///< since 1970-01-01 UTC
    capture::Header header;
    capture::ByteView payload; ///< as long as the block lives
};

/// \param block that this recorder has written
/// \return nothing for one that is no packet
std::optional<PacketBlock> packetOf(capture::ByteView block);

/// The block with another link in its packet's header. \pre packetOf(block)
std::string withLink(std::string block, std::uint32_t link);

/// Of what this recorder has written.
std::uint32_t typeOf(capture::ByteView block);

} // namespace recorder
