#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "capturefile.h"
#include "packetblock.h"

namespace recorder {

/// A file of a recording that has others as well, with statistics of its own.
class SliceFile
{
public:
    /// \param sequence first one of the recording's packets in it
    SliceFile(const std::string &path, std::uint64_t sequence)
        : file(path)
        , firstSequence(sequence)
    {
    }

    /// Behind an error, nothing else is written. A return whose call is not in the file says that it was
    /// lost.
    void add(const std::string &block);
    /// Writes what was added.
    void flush();
    /// Writes the statistics, and closes.
    void finish();

    const std::string &error() const { return file.error(); }
    const std::string &path() const { return file.path(); }

private:
    struct InterfaceCounts
    {
        std::uint64_t received = 0;
        std::uint64_t dropped = 0;
    };

    void count(const PacketBlock &packet);
    bool isCallElsewhere(const capture::Header &header) const;

    CaptureFile file;
    const std::uint64_t firstSequence;
    std::string blocks; ///< that are not written
    std::vector<std::size_t> sizes;
    std::vector<InterfaceCounts> interfaces;
    std::uint64_t firstStampNs = 0;
    std::uint64_t lastStampNs = 0;
};

} // namespace recorder
