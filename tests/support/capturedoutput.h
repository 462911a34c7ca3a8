#pragma once

#include <cstdio>
#include <QByteArray>
#include <QTemporaryFile>
#include <unistd.h>

/// Catches what this process writes to one of its standard streams while it lives.
class CapturedOutput
{
public:
    /// \param captured stdout or stderr
    explicit CapturedOutput(FILE *captured)
        : stream(captured)
    {
        if (!file.open())
            qFatal("no file for the output");
        std::fflush(stream);
        saved = dup(fileno(stream));
        dup2(file.handle(), fileno(stream));
    }
    ~CapturedOutput() { restore(); }

    CapturedOutput(const CapturedOutput &) = delete;
    CapturedOutput &operator=(const CapturedOutput &) = delete;

    /// Stops, and gives what was written.
    QByteArray text()
    {
        restore();
        file.seek(0);
        return file.readAll();
    }

private:
    void restore()
    {
        if (saved < 0)
            return;
        std::fflush(stream);
        dup2(saved, fileno(stream));
        close(saved);
        saved = -1;
    }

    FILE *stream;
    QTemporaryFile file;
    int saved = -1;
};
