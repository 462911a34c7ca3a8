// Preloaded into the recorder: each write to a file takes WRITE_US microseconds, and the one of the number
// FAILED_WRITE, from 1, finds the disk full.

#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

namespace {

int numberIn(const char *name)
{
    const char *value = std::getenv(name);
    return value ? std::atoi(value) : 0;
}

} // namespace

extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void *bytes, size_t size)
{
    static int count = 0;
    if (file > STDERR_FILENO) {
        usleep(static_cast<useconds_t>(numberIn("WRITE_US")));
        if (++count == numberIn("FAILED_WRITE")) {
            errno = ENOSPC;
            return -1;
        }
    }
    return reinterpret_cast<decltype(&::write)>(dlsym(RTLD_NEXT, "write"))(file, bytes, size);
}
