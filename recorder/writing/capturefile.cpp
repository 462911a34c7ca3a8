#include "capturefile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace recorder {

CaptureFile::CaptureFile(const std::string &path)
    : filePath(path)
    , file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600))
{
    if (file < 0)
        trouble = std::strerror(errno);
}

CaptureFile::~CaptureFile()
{
    if (file >= 0)
        ::close(file);
}

std::size_t CaptureFile::write(const std::string &blocks, const std::vector<std::size_t> &sizes)
{
    if (!isWhole)
        return 0;
    std::size_t written = 0;
    while (written < blocks.size()) {
        const ssize_t count = ::write(file, blocks.data() + written, blocks.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            trouble = std::strerror(errno);
            break;
        }
        written += static_cast<std::size_t>(count);
    }
    std::size_t whole = 0;
    std::size_t kept = 0;
    while (kept < sizes.size() && whole + sizes[kept] <= written)
        whole += sizes[kept++];
    size += whole;
    isWhole = written == whole || cutBack();
    return kept;
}

void CaptureFile::close()
{
    if (::close(file) != 0)
        trouble = std::strerror(errno);
    file = -1;
}

bool CaptureFile::cutBack()
{
    const auto end = static_cast<off_t>(size);
    return ftruncate(file, end) == 0 && lseek(file, end, SEEK_SET) == end;
}

void CaptureFile::remove()
{
    struct stat own
    {
    };
    struct stat there
    {
    };
    // The host may have put another in its place.
    if (fstat(file, &own) == 0 && lstat(filePath.c_str(), &there) == 0 && own.st_ino == there.st_ino &&
        own.st_dev == there.st_dev)
        unlink(filePath.c_str());
}

} // namespace recorder
