#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bytes.h"

/// A regular file that is open for reading.
class ReplayFile
{
public:
    /// \param error why it cannot be opened; empty when it can
    ReplayFile(const std::string &path, std::string &error);
    ~ReplayFile();
    ReplayFile(const ReplayFile &) = delete;
    ReplayFile &operator=(const ReplayFile &) = delete;

    int descriptor() const { return file; }

private:
    int file;
};

/// Bytes of a file, most of which are asked for in the order in which they stand there. One thread at a time.
class ReplayBytes
{
public:
    explicit ReplayBytes(const ReplayFile &file_)
        : file(file_)
    {
    }

    /// Never null, and valid until the next call.
    /// \param length behind what was recorded are zeros
    /// \return nothing when they cannot be read
    std::optional<capture::ByteView> at(std::uint64_t offset, std::size_t recorded, std::size_t length);

private:
    bool read(std::uint64_t offset, std::size_t length);

    const ReplayFile &file;
    std::vector<unsigned char> bytes;
    std::vector<unsigned char> extended; ///< by the zeros
    std::uint64_t bytesOffset = 0;       ///< of the first one in the file
    std::size_t count = 0;
};
