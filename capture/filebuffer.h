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
    /// \return false at the end of the file; a later call goes on when it has grown
    bool require(std::size_t count);

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
};

} // namespace capture
