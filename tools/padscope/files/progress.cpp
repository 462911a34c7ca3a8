#include "progress.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace padscope {

namespace {

constexpr std::chrono::milliseconds interval{500};

} // namespace

Progress::Progress(std::uint64_t total)
    : totalBytes(total)
    , isTerminal(isatty(STDERR_FILENO) != 0)
    , next(std::chrono::steady_clock::now() + interval)
{
}

void Progress::look()
{
    const auto now = std::chrono::steady_clock::now();
    if (now < next)
        return;
    next = now + interval;
    std::string line = text();
    const std::size_t length = line.size();
    line.resize(std::max(length, shownLength), ' '); // covers what a longer line left
    shownLength = length;
    std::fprintf(stderr, "\r%s", line.c_str());
}

std::string Progress::text() const
{
    std::string line = std::to_string(packets) + " packets";
    if (totalBytes > 0) // a file may have grown
        line += ", " + std::to_string(std::min<std::uint64_t>(doneBytes * 100 / totalBytes, 100)) + " %";
    return line;
}

void Progress::clear()
{
    if (shownLength > 0)
        std::fprintf(stderr, "\r%*s\r", static_cast<int>(shownLength), "");
    shownLength = 0;
}

} // namespace padscope
