#include "quitsignals.h"

#include <csignal>
#include <fcntl.h>
#include <QSocketNotifier>
#include <unistd.h>

namespace {

volatile int writeEnd = -1;

/// A signal handler may do little more than write(); the rest happens in the event loop.
void passOn(int /*number*/)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
}

void handle(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace

QuitSignals::QuitSignals()
{
    if (pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writeEnd = pipe_[1];
    auto *notifier = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &QuitSignals::drain);
    handle(passOn);
}

QuitSignals::~QuitSignals()
{
    if (writeEnd < 0)
        return;
    handle(SIG_DFL);
    writeEnd = -1;
    close(pipe_[0]);
    close(pipe_[1]);
}

void QuitSignals::drain()
{
    char byte = 0;
    while (read(pipe_[0], &byte, 1) > 0) {
    }
    emit quitRequested();
}
