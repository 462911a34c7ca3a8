#pragma once

#include <cstdint>
#include <vector>

#include "bytes.h"

namespace capture {

/// The next bytes of a file or a pipe.
class FileBuffer
{
public:
    /// \param descriptor stays the caller's
    explicit FileBuffer(int descriptor);

    /// Reads until at least so many bytes are here, or the file ends. Memory is taken for what was read only,
    /// whatever `count` promises.
    /// \return false at the end of the file, where a later call goes on when it has grown, or on an error
    bool require(std::size_t count);

    /// Number of the error of the last read; 0 at the end of the file.
    int error() const { return lastError; }

    /// Those that are here. Valid until the next require().
    ByteView view() const { return {bytes.data() + first, size()}; }
    std::size_t size() const { return last - first; }
    /// Drops the first ones. \pre count <= size()
    void drop(std::size_t count) { first += count; }

private:
    int file;
    std::vector<unsigned char> bytes;
    std::size_t first = 0;
    std::size_t last = 0;
    int lastError = 0;
};

} // namespace capture
