#include "diffoutput.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace {

constexpr std::size_t pieceSize = 64 * 1024;

} // namespace

namespace padscope {

ProgressLine::ProgressLine()
    : isTerminal(isatty(STDERR_FILENO) != 0)
{
}

void ProgressLine::show(const char *what, double share)
{
    const int percent = static_cast<int>(100 * share);
    if (!isTerminal || (isShown && percent == lastPercent))
        return;
    std::fprintf(stderr, "\r%s: %d %% ", what, percent);
    lastPercent = percent;
    isShown = true;
}

void ProgressLine::clear()
{
    if (isShown)
        std::fputs("\r\x1b[K", stderr);
    isShown = false;
}

bool DiffOutput::print(const std::string &line)
{
    (text += line) += '\n';
    return text.size() < pieceSize || flush();
}

bool DiffOutput::flush()
{
    if (!text.empty())
        progress.clear();
    if (error == 0 &&
        (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0))
        error = errno;
    text.clear();
    errno = error;
    return error == 0;
}

} // namespace padscope
