#include "markinbox.h"

#include <algorithm>
#include <cstdio>
#include <sys/epoll.h>
#include <unistd.h>

#include "bytes.h"
#include "payloads.h"
#include "utf8.h"

namespace marking {

namespace {

/// Those that ask for nothing make room for others.
constexpr std::size_t maxConnections = 8;
constexpr int backlog = 8;
/// Whoever connects all the time does not keep the recorder from its ring.
constexpr int maxTurns = 32;
constexpr std::size_t timeLength = 8;

std::string nameOf(std::uint32_t session)
{
    char number[16];
    std::snprintf(number, sizeof number, "%08x", session);
    return std::string(namePrefix) + number;
}

bool watch(int epoll, int file)
{
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = file;
    return epoll_ctl(epoll, EPOLL_CTL_ADD, file, &event) == 0;
}

} // namespace

MarkInbox::MarkInbox(std::uint32_t session)
    : epoll(epoll_create1(EPOLL_CLOEXEC))
    , listener(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
{
    const Address address = addressOf(nameOf(session));
    if (bind(listener, reinterpret_cast<const sockaddr *>(&address.bytes), address.length) == 0 &&
        ::listen(listener, backlog) == 0 && watch(epoll, listener))
        return;
    close(epoll);
    epoll = -1;
}

MarkInbox::~MarkInbox()
{
    for (const int file : connections)
        close(file);
    for (const int file : {listener, epoll}) {
        if (file >= 0)
            close(file);
    }
}

std::optional<Mark> MarkInbox::take()
{
    epoll_event ready{};
    for (int turn = 0; turn < maxTurns && epoll_wait(epoll, &ready, 1, 0) == 1; ++turn) {
        if (ready.data.fd == listener)
            admit();
        else if (std::optional<Mark> mark = read(ready.data.fd))
            return mark;
    }
    return std::nullopt;
}

Mark MarkInbox::numbered(const Mark &mark)
{
    ++count;
    return {mark.askedNs, mark.text.empty() ? "mark " + std::to_string(count) : mark.text, mark.signal};
}

/// Nobody of another user.
void MarkInbox::admit()
{
    const int connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (connection < 0)
        return;
    if (!peerOf(connection).isOfThisUser || !watch(epoll, connection)) {
        close(connection);
        return;
    }
    connections.push_back(connection);
    if (connections.size() > maxConnections)
        drop(connections.front());
}

/// One that does not keep to the format gets no answer.
std::optional<Mark> MarkInbox::read(int connection)
{
    std::string message(timeLength + capture::maxReportLength, '\0');
    const ssize_t length = recv(connection, message.data(), message.size(), MSG_TRUNC);
    std::optional<Mark> mark;
    if (length >= static_cast<ssize_t>(timeLength) && static_cast<std::size_t>(length) <= message.size()) {
        message.resize(static_cast<std::size_t>(length));
        const std::string text = message.substr(timeLength);
        const auto askedNs = capture::integerAt<std::uint64_t>(capture::viewOf(message), 0);
        if (isUtf8(text))
            mark = numbered({askedNs, text});
    }
    if (mark) {
        std::string answer;
        capture::append(answer, count);
        send(connection, answer.data(), answer.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    }
    drop(connection);
    return mark;
}

void MarkInbox::drop(int connection)
{
    connections.erase(std::find(connections.begin(), connections.end(), connection));
    close(connection);
}

} // namespace marking
