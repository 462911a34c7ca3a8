#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <QByteArray>
#include <QString>
#include <termios.h>
#include <unistd.h>

/// What a terminal shows.
class Terminal
{
public:
    Terminal()
        : master(posix_openpt(O_RDWR | O_NOCTTY))
    {
        grantpt(master);
        unlockpt(master);
        slave = open(ptsname(master), O_RDWR | O_NOCTTY);
    }
    ~Terminal()
    {
        close(slave);
        close(master);
    }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    QString path() const { return ttyname(slave); }
    void stop() const { tcflow(slave, TCOOFF); }
    QByteArray text()
    {
        char bytes[4096];
        for (pollfd waited{master, POLLIN, 0}; poll(&waited, 1, 0) > 0 && (waited.revents & POLLIN) != 0;) {
            const ssize_t count = read(master, bytes, sizeof bytes);
            if (count <= 0)
                break;
            shown.append(bytes, static_cast<int>(count));
        }
        return shown;
    }

private:
    int master;
    int slave;
    QByteArray shown;
};
