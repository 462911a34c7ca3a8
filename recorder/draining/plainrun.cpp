#include "plainrun.h"

#include <ctime>
#include <poll.h>
#include <unistd.h>

#include "groupwitness.h"

namespace recorder {

namespace {

constexpr timespec groupSignalTime{0, groupSignalMs * 1'000'000};
constexpr int endIntervalMs = 20; ///< when the host's end cannot be waited for

/// Unless the host has got it already, as all of the process group.
void pass(int number, const HostProcess &host, GroupWitness &witness)
{
    if (number != SIGINT && number != SIGTERM && number != SIGHUP)
        return;
    nanosleep(&groupSignalTime, nullptr);
    if (!witness.hasSeen(number) || getpgid(host.id()) != getpgrp())
        host.signal(number);
}

} // namespace

PlainRunResult runPlainly(const std::vector<std::string> &command,
                          const HostProcess::Environment &environment)
{
    const SignalInbox signals;
    GroupWitness witness;
    HostProcess host(command, environment, signals.previousMask());
    if (host.error() != 0)
        return {statusOfStartError(host.error()), host.error()};
    const ProcessHandle handle(host.id());
    while (!host.end()) {
        pollfd waited[] = {{signals.descriptor(), POLLIN, 0}, {handle.descriptor(), POLLIN, 0}};
        poll(waited, 2, handle.descriptor() < 0 ? endIntervalMs : -1);
        for (int number = signals.take(); number != 0; number = signals.take())
            pass(number, host, witness);
    }
    return {statusOf(*host.end()), 0};
}

} // namespace recorder
