#pragma once

#include <cstdio>
#include <unistd.h>

#include <QByteArray>
#include <QTemporaryFile>

/// Catches what this process writes to standard error while it lives.
class CapturedStderr
{
public:
    CapturedStderr()
    {
        if (!file.open())
            qFatal("no file for standard error");
        std::fflush(stderr);
        saved = dup(STDERR_FILENO);
        dup2(file.handle(), STDERR_FILENO);
    }
    ~CapturedStderr() { restore(); }

    CapturedStderr(const CapturedStderr &) = delete;
    CapturedStderr &operator=(const CapturedStderr &) = delete;

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
        std::fflush(stderr);
        dup2(saved, STDERR_FILENO);
        close(saved);
        saved = -1;
    }

    QTemporaryFile file;
    int saved = -1;
};
