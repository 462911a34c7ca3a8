#include "filebuffer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace capture {

namespace {

constexpr std::size_t chunk = 64 * 1024;

} // namespace

FileBuffer::FileBuffer(int descriptor)
    : file(descriptor)
    , bytes(chunk)
{
}

bool FileBuffer::require(std::size_t count)
{
    while (size() < count) {
        if (first > 0) {
            std::memmove(bytes.data(), bytes.data() + first, size());
            last -= first;
            first = 0;
        }
        if (last == bytes.size())
            bytes.resize(2 * bytes.size());
        const ssize_t received = read(file, bytes.data() + last, bytes.size() - last);
        if (received < 0 && errno == EINTR)
            continue;
        if (received <= 0) {
            lastError = received < 0 ? errno : 0;
            return false;
        }
        last += static_cast<std::size_t>(received);
    }
    return true;
}

} // namespace capture
