#pragma once

#include <cstdio>

#include <QTemporaryFile>

#include <unistd.h>

/// Turns standard output into a file for as long as it lives.
class StandardOutput
{
public:
    StandardOutput()
    {
        std::fflush(stdout);
        file.open();
        dup2(file.handle(), STDOUT_FILENO);
    }
    ~StandardOutput()
    {
        std::fflush(stdout);
        dup2(terminal, STDOUT_FILENO);
        close(terminal);
    }

    StandardOutput(const StandardOutput &) = delete;
    StandardOutput &operator=(const StandardOutput &) = delete;

    /// What has been written so far.
    QByteArray text()
    {
        std::fflush(stdout);
        file.seek(0);
        return file.readAll();
    }

private:
    QTemporaryFile file;
    int terminal = dup(STDOUT_FILENO);
};
