#pragma once

#include <cstdint>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

/// How a mark is asked for in a running recording. Each recorder listens on a socket that has no file; both
/// ends ask the kernel whether the other one is of the same user. A request is one message: the time of the
/// monotonic clock in eight bytes, and the text. The answer is the mark's number in four.
namespace marking {

/// The kernel's list of sockets has names that begin with this, and go on in a random number, so that nobody
/// can have taken one before.
inline constexpr char namePrefix[] = "padscope-record-";

struct Mark
{
    std::uint64_t askedNs = 0; ///< when it was asked for, by the monotonic clock
    std::string text;
    int signal = 0; ///< that has asked for it
};

struct Address
{
    sockaddr_un bytes{};
    socklen_t length = 0;
};

/// Of a name without a file.
Address addressOf(const std::string &name);

/// Who is at the other end of a connection.
struct Peer
{
    pid_t process = 0;
    bool isOfThisUser = false;
};

Peer peerOf(int socket);

std::uint64_t monotonicNs();

} // namespace marking
