#include "capturefile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace recorder {

CaptureFile::CaptureFile(const std::string &filePath)
    : path(filePath)
    , file(open(filePath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600))
{
    if (file < 0)
        trouble = std::strerror(errno);
}

CaptureFile::~CaptureFile()
{
    if (file >= 0)
        close(file);
}

bool CaptureFile::write(const std::string &block)
{
    std::size_t written = 0;
    while (written < block.size()) {
        const ssize_t count = ::write(file, block.data() + written, block.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            trouble = std::strerror(errno);
            // Where this fails the file ends within a block, which readers tell.
            if (written > 0 && ftruncate(file, static_cast<off_t>(size)) == 0)
                lseek(file, static_cast<off_t>(size), SEEK_SET);
            return false;
        }
        written += static_cast<std::size_t>(count);
    }
    size += block.size();
    return true;
}

void CaptureFile::remove()
{
    unlink(path.c_str());
}

} // namespace recorder
