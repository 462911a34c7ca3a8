#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.h"
#include "filebuffer.h"
#include "pcapng.h"

namespace capture::pcapng {

struct Section
{
    std::uint64_t offset = 0; ///< of its header in the file
    std::string comment;
    std::string hardware;
    std::string operatingSystem;
    std::string userApplication;
};

struct Interface
{
    std::string name;
    std::string description;
    std::uint16_t linkType = 0;
    std::uint8_t resolution = 6;    ///< as the format has it: 10^-n s, or 2^-n s with the highest bit set
    std::int64_t offsetSeconds = 0; ///< added to each time
};

struct Packet
{
    std::uint32_t interface = 0; ///< index in interfaces()
    std::uint64_t timeNs = 0;    ///< since 1970-01-01 UTC
    std::uint32_t originalLength = 0;
    ByteView data;
    std::uint32_t flags = 0;
    std::uint64_t dropCount = 0;
    std::vector<std::string_view> comments;
};

enum class Event
{
    Section,
    Interface,
    Packet,
    Statistics, ///< of an interface, which are not read
    OtherFrame, ///< a block that is not read, and which Wireshark numbers as a frame; a simple packet has no
                ///< time
    Other,      ///< a block of a type that is not read
    End,        ///< of the file, as it is now: next() goes on when it has grown
    Damage,     ///< nothing can be read behind it
};

struct Damage
{
    std::uint64_t offset = 0; ///< of the block in the file
    std::string reason;
};

/// Reads any pcapng file block by block, of either byte order, from a file or a pipe. Memory is taken for one
/// block at a time.
class Reader
{
public:
    /// \param file a descriptor that stays the caller's
    explicit Reader(int file);

    /// Goes on to the next block. What was read of the last one is gone.
    Event next();

    const Section &section() const { return lastSection; }
    ByteOrder byteOrder() const { return order; } ///< of the section
    /// Those of the section, in the order of their descriptions.
    const std::vector<Interface> &interfaces() const { return described; }
    const Packet &packet() const { return lastPacket; }
    const Damage &damage() const { return found; }
    /// At an End: the file ends within a block.
    bool endsWithinBlock() const { return buffer.size() > 0 || skipping > 0; }

    /// The block's offset in the file; at an End that of the next one, or of the one within which the file
    /// ends.
    std::uint64_t offset() const { return blockOffset; }
    /// The block as it stands in the file; empty for one of a type that is not read and above the limit.
    ByteView block() const { return lastBlock; }

private:
    Event fail(std::string reason);
    Event endOrFailure();
    bool useByteOrder();
    Event skipRest();
    Event readBlock(std::uint32_t type, std::uint32_t length);
    Event readBody(std::uint32_t type, ByteView body);
    Event readSection(ByteView body);
    Event readInterface(ByteView body);
    Event readPacket(ByteView body, std::uint32_t interface);
    /// `use(option, value)` for each. \return false when they do not fit their block
    template <typename Use>
    bool readOptions(ByteView options, Use use) const;
    template <typename Integer>
    Integer at(ByteView bytes, std::size_t index) const
    {
        return integerAt<Integer>(bytes, index, order);
    }

    FileBuffer buffer;
    ByteOrder order = ByteOrder::Little;
    bool hasSection = false;
    bool isDamaged = false;
    std::uint64_t blockOffset = 0;
    std::uint64_t blockLength = 0; ///< from there to the next; 0 before it is known
    std::uint64_t skipping = 0;    ///< bytes of a large block that are still to come, and are not kept
    ByteView lastBlock;
    Section lastSection;
    std::vector<Interface> described;
    Packet lastPacket;
    Damage found;
};

} // namespace capture::pcapng
