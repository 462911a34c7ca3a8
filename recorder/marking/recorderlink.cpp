#include "recorderlink.h"

#include <fstream>
#include <poll.h>
#include <set>
#include <unistd.h>
#include <utility>

#include "bytes.h"
#include "marking.h"

namespace marking {

namespace {

constexpr int answerTimeoutMs = 5000;

/// Names of the sockets of recorders, of any user. A connection has its listener's.
std::set<std::string> socketNames()
{
    const std::string start = std::string(" @") + namePrefix;
    std::set<std::string> names;
    std::ifstream sockets("/proc/net/unix");
    for (std::string line; std::getline(sockets, line);) {
        if (const std::size_t place = line.find(start); place != std::string::npos)
            names.insert(line.substr(place + 2));
    }
    return names;
}

} // namespace

RecorderLink::~RecorderLink()
{
    if (socket >= 0)
        close(socket);
}

RecorderLink::RecorderLink(RecorderLink &&other) noexcept
    : socket(std::exchange(other.socket, -1))
{
}

std::optional<std::uint32_t> RecorderLink::mark(const std::string &text) const
{
    std::string request;
    capture::append(request, monotonicNs());
    request += text;
    if (send(socket, request.data(), request.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(request.size()))
        return std::nullopt;
    pollfd answered{socket, POLLIN, 0};
    std::string answer(sizeof(std::uint32_t), '\0');
    if (poll(&answered, 1, answerTimeoutMs) <= 0 ||
        recv(socket, answer.data(), answer.size(), 0) != static_cast<ssize_t>(answer.size()))
        return std::nullopt;
    return capture::integerAt<std::uint32_t>(capture::viewOf(answer), 0);
}

std::map<pid_t, RecorderLink> connectToRecorders()
{
    std::map<pid_t, RecorderLink> links;
    for (const std::string &name : socketNames()) {
        const Address address = addressOf(name);
        const int file = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        RecorderLink link(file);
        if (connect(file, reinterpret_cast<const sockaddr *>(&address.bytes), address.length) != 0)
            continue;
        // Somebody else's may listen under any name.
        if (const Peer peer = peerOf(file); peer.isOfThisUser)
            links.emplace(peer.process, std::move(link));
    }
    return links;
}

} // namespace marking
