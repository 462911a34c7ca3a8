#include "replayfile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

constexpr std::size_t chunk = 64 * 1024;

// Opening a pipe must not wait for whoever writes to it.
ReplayFile::ReplayFile(const std::string &path, std::string &error)
    : file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    struct stat status
    {
    };
    if (file < 0 || fstat(file, &status) != 0)
        error = std::strerror(errno);
    else if (!S_ISREG(status.st_mode))
        error = "it is not a regular file";
}

ReplayFile::~ReplayFile()
{
    if (file >= 0)
        close(file);
}

std::optional<capture::ByteView> ReplayBytes::at(std::uint64_t offset, std::size_t recorded,
                                                 std::size_t length)
{
    if (!read(offset, recorded))
        return std::nullopt;
    const unsigned char *found = bytes.data() + (offset - bytesOffset);
    if (length == recorded)
        return capture::ByteView{found, length};
    extended.assign(found, found + recorded);
    extended.resize(length);
    return capture::ByteView{extended.data(), length};
}

/// \return whether they are within `bytes` now
bool ReplayBytes::read(std::uint64_t offset, std::size_t length)
{
    const bool isHere = offset >= bytesOffset && offset - bytesOffset <= count &&
                        length <= count - static_cast<std::size_t>(offset - bytesOffset);
    if (isHere && !bytes.empty())
        return true;
    bytes.resize(std::max(length, chunk));
    bytesOffset = offset;
    count = 0;
    while (count < length) {
        const ssize_t received = pread(file.descriptor(), bytes.data() + count, bytes.size() - count,
                                       static_cast<off_t>(offset + count));
        if (received < 0 && errno == EINTR)
            continue;
        if (received <= 0)
            return false;
        count += static_cast<std::size_t>(received);
    }
    return true;
}
