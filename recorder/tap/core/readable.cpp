#include "readable.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/uio.h>
#include <unistd.h>

#include "payloads.h"

namespace tap {

namespace {

constexpr std::size_t pageSize = 4096; // the smallest that there is
constexpr std::size_t maxPages = capture::maxReportLength / pageSize + 2;

std::size_t untilNextPage(const void *bytes)
{
    return pageSize - reinterpret_cast<std::uintptr_t>(bytes) % pageSize;
}

} // namespace

bool isReadable(const void *bytes, std::size_t length)
{
    iovec places[maxPages];
    std::size_t count = 0;
    const auto *at = static_cast<const char *>(bytes);
    for (std::size_t left = length; left > 0 && count < maxPages;) {
        places[count++] = {const_cast<char *>(at), 1};
        const std::size_t step = std::min(left, untilNextPage(at));
        at += step;
        left -= step;
    }
    char read[maxPages];
    const iovec into{read, count};
    const ssize_t result = process_vm_readv(getpid(), &into, 1, places, count, 0);
    return result == static_cast<ssize_t>(count) || (result < 0 && errno != EFAULT);
}

std::optional<std::size_t> lengthOf(const char *text)
{
    for (const char *at = text;;) {
        if (!isReadable(at, 1))
            return std::nullopt;
        const std::size_t step = untilNextPage(at);
        if (const void *end = std::memchr(at, 0, step))
            return static_cast<std::size_t>(static_cast<const char *>(end) - text);
        at += step;
    }
}

} // namespace tap
