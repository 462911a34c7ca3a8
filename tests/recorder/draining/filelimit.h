#pragma once

#include <csignal>
#include <sys/resource.h>

/// While in scope a file may not grow beyond so many bytes.
class FileLimit
{
public:
    explicit FileLimit(rlim_t bytes)
        : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limited{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FileLimit(const FileLimit &) = delete;
    FileLimit &operator=(const FileLimit &) = delete;

private:
    rlimit before{};
    void (*handler)(int);
};
