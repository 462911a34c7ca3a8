#pragma once

#include <string>

namespace padscope {

/// A line on a terminal that tells how far it is.
class ProgressLine
{
public:
    ProgressLine();
    ~ProgressLine() { clear(); }
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    void show(const char *what, double share);
    void clear();

private:
    const bool isTerminal;
    bool isShown = false;
    int lastPercent = 0;
};

/// Lines on their way to standard output.
class DiffOutput
{
public:
    explicit DiffOutput(ProgressLine &line)
        : progress(line)
    {
    }

    /// \return false when nothing can be printed any more
    bool print(const std::string &line);
    /// \return false, with errno, when nothing can be printed any more
    bool flush();

private:
    ProgressLine &progress;
    std::string text;
    int error = 0;
};

} // namespace padscope
