#include "sharedring.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/random.h>
#include <unistd.h>

namespace recorder {

namespace {

std::uint32_t cellCountOf(std::size_t size)
{
    std::size_t rounded = minRingSize;
    while (rounded < std::min(size, maxRingSize))
        rounded *= 2;
    return static_cast<std::uint32_t>(rounded / ring::cellSize);
}

} // namespace

SharedRing::SharedRing(std::size_t size, std::uint32_t session)
{
    const std::uint32_t cellCount = cellCountOf(size);
    if (!make(ring::sizeOf(cellCount)))
        return;
    memory->magic = ring::magic;
    memory->cellCount = cellCount;
    memory->session = session;
    if (getrandom(&memory->key, sizeof memory->key, 0) != sizeof memory->key)
        fail("no random number");
}

SharedRing::~SharedRing()
{
    if (memory)
        munmap(memory, mappedBytes);
    if (file >= 0)
        close(file);
}

bool SharedRing::make(std::size_t bytes)
{
    file = memfd_create("padscope", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (file < 0) {
        fail("no shared memory");
        return false;
    }
    // A page that can't be had later would kill the host.
    const int error = posix_fallocate(file, 0, static_cast<off_t>(bytes));
    if (error != 0) {
        errno = error;
        fail("no room for the ring");
        return false;
    }
    void *mapped = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, file, 0);
    if (mapped == MAP_FAILED || fcntl(file, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0) {
        fail("no shared memory");
        return false;
    }
    mappedBytes = bytes;
    memory = new (mapped) ring::Control;
    return true;
}

void SharedRing::fail(const char *what)
{
    trouble = std::string(what) + ": " + std::strerror(errno);
}

std::string SharedRing::path() const
{
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file);
}

} // namespace recorder
