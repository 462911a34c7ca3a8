#include "marking.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <unistd.h>

namespace marking {

Address addressOf(const std::string &name)
{
    Address address;
    address.bytes.sun_family = AF_UNIX;
    // A zero in front stands for no file.
    const std::size_t length = std::min(name.size(), sizeof address.bytes.sun_path - 1);
    std::copy_n(name.begin(), length, address.bytes.sun_path + 1);
    address.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    return address;
}

Peer peerOf(int socket)
{
    ucred credentials{};
    socklen_t length = sizeof credentials;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &length) != 0)
        return {};
    return {credentials.pid, credentials.uid == geteuid()};
}

std::uint64_t monotonicNs()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(time.tv_nsec);
}

} // namespace marking
