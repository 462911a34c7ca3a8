#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>

namespace marking {

/// A connection to a recorder of the same user.
class RecorderLink
{
public:
    explicit RecorderLink(int connectedSocket)
        : socket(connectedSocket)
    {
    }
    ~RecorderLink();
    RecorderLink(RecorderLink &&other) noexcept;
    RecorderLink &operator=(RecorderLink &&) = delete;

    /// Asks for a mark of this moment. Waits up to five seconds.
    /// \param text UTF-8 of at most 65,495 bytes
    /// \return the mark's number; nothing when the recorder does not answer
    std::optional<std::uint32_t> mark(const std::string &text) const;

private:
    int socket;
};

/// To all that run, by the numbers of their processes.
std::map<pid_t, RecorderLink> connectToRecorders();

} // namespace marking
