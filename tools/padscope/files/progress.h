#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace padscope {

/// "1200000 packets, 34 %": a line on a terminal's standard error that tells how far a long run has come. It
/// appears after half a second, and nowhere else than on a terminal.
class Progress
{
public:
    /// \param totalBytes of the files that are read; 0 when it is not known, as of a pipe
    explicit Progress(std::uint64_t totalBytes);
    ~Progress() { clear(); }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// One more packet.
    /// \param blockBytes size of its block in the file
    void follow(std::size_t blockBytes)
    {
        doneBytes += blockBytes;
        if (++packets % packetsPerLook == 0 && isTerminal)
            look();
    }

    /// Removes the line. To be called before anything else is printed.
    void clear();

private:
    static constexpr std::uint64_t packetsPerLook = 1024; ///< at the clock

    void look();
    std::string text() const;

    const std::uint64_t totalBytes;
    const bool isTerminal;
    std::chrono::steady_clock::time_point next;
    std::uint64_t packets = 0;
    std::uint64_t doneBytes = 0;
    std::size_t shownLength = 0;
};

} // namespace padscope
