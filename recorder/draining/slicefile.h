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
    explicit SliceFile(const std::string &path)
        : file(path)
    {
    }

    /// Behind an error, nothing else is written.
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

    CaptureFile file;
    std::string blocks; ///< that are not written
    std::vector<std::size_t> sizes;
    std::vector<InterfaceCounts> interfaces;
    std::uint64_t firstStampNs = 0;
    std::uint64_t lastStampNs = 0;
};

} // namespace recorder
