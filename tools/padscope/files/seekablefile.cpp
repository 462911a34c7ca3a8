#include "seekablefile.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace padscope {

namespace {

constexpr std::size_t pieceSize = 256 * 1024;

/// \return -1 with errno
int openTemporary()
{
    const char *folder = std::getenv("TMPDIR");
    std::string path = std::string(folder && *folder ? folder : "/tmp") + "/padscope-XXXXXX";
    const int file = mkostemp(path.data(), O_CLOEXEC);
    if (file >= 0)
        unlink(path.c_str());
    return file;
}

bool writeAll(int file, const char *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(file, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

} // namespace

SeekableFile::SeekableFile(int file)
    : original(file)
{
    if (lseek(file, 0, SEEK_CUR) < 0)
        lastError = copyToTemporary();
}

SeekableFile::~SeekableFile()
{
    if (copy >= 0)
        close(copy);
}

/// \return the number of the error
int SeekableFile::copyToTemporary()
{
    copy = openTemporary();
    if (copy < 0)
        return errno;
    std::vector<char> piece(pieceSize);
    for (;;) {
        const ssize_t count = read(original, piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || (count > 0 && !writeAll(copy, piece.data(), static_cast<std::size_t>(count))))
            return errno;
        if (count == 0)
            return lseek(copy, 0, SEEK_SET) == 0 ? 0 : errno;
    }
}

} // namespace padscope
