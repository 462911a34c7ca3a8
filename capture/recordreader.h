#pragma once

#include <cstdint>
#include <functional>

#include "header.h"
#include "pcapngreader.h"

namespace capture {

/// One packet of a capture. Its bytes are valid until the next is read.
struct Record
{
    std::uint64_t frame = 0;  ///< number of the packet in the file, from 1, foreign ones included
    std::uint64_t offset = 0; ///< of its block in the file
    std::uint64_t timeNs = 0; ///< since 1970-01-01 UTC
    Header header;
    ByteView payload;
    std::uint32_t payloadLength = 0; ///< before it was cut
    std::uint64_t dropCount = 0;
};

/// What a reader passed by.
struct Skipped
{
    std::uint64_t foreignPackets = 0;
    std::uint64_t otherBlocks = 0;
    std::uint64_t cutHeaders = 0;       ///< packets of a capture that were cut within their header
    std::uint64_t newVersions = 0;      ///< packets of a later version of the format
    std::uint64_t newVersionOffset = 0; ///< of the first of these
};

/// Reads the packets of a capture out of any pcapng file.
class RecordReader
{
public:
    /// \param file a descriptor that stays the caller's
    explicit RecordReader(int file)
        : reader(file)
    {
    }

    /// Goes on to the next packet of a capture.
    /// \return Packet, End or Damage, as pcapng::Reader::next()
    pcapng::Event next();

    /// Called with each block as it stands in the file, when it is set. Empty for one that is too large to be
    /// kept.
    std::function<void(ByteView block)> onBlock;
    /// Called for each packet that is passed by, when it is set. Then file() tells which.
    std::function<void(std::uint64_t frame, HeaderTrouble trouble)> onPassedBy;

    const Record &record() const { return last; }
    const Skipped &skipped() const { return passed; }
    const pcapng::Damage &damage() const { return reader.damage(); }
    const pcapng::Reader &file() const { return reader; }

private:
    bool take(const pcapng::Packet &packet);
    void passBy(HeaderTrouble trouble);

    pcapng::Reader reader;
    std::uint64_t frames = 0;
    Record last;
    Skipped passed;
};

} // namespace capture
