#include "recordrun.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <poll.h>
#include <sys/random.h>

#include "capturefile.h"
#include "consumer.h"
#include "librarysearch.h"
#include "orphans.h"
#include "recording.h"

namespace recorder {

namespace {

constexpr int drainIntervalMs = 20;
constexpr std::uint64_t statusIntervalNs = 10'000'000'000;
constexpr std::uint64_t progressIntervalNs = 1'000'000'000;
constexpr std::uint64_t clockStepNs = 100'000'000; ///< of the wall clock, that is told at once
constexpr int notExecutable = 126;
constexpr int notFound = 127;

std::uint32_t randomSession()
{
    std::uint32_t session = 0;
    if (getrandom(&session, sizeof session, 0) != sizeof session)
        session = static_cast<std::uint32_t>(Clocks::now().realNs);
    return session;
}

/// Where neither the options nor the loader have a library, the loader finds what it would find alone:
/// nothing. The host may still hand one over.
HostProcess::Environment environmentOf(const RecordOptions &options, const SharedRing &ring,
                                       const std::string &found)
{
    HostProcess::Environment environment{
        {"PADSCOPE_RING", ring.path()},
        {"PADSCOPE_TAP", options.tap},
        {"PADSCOPE_DRIVER", found}, // which the host replaces
        {"PADSCOPE_DRIVER_OPTION", options.driver},
    };
    if (!options.driver.empty() || !found.empty()) {
        const std::string folder = options.tap.substr(0, options.tap.rfind('/'));
        const char *path = std::getenv("LD_LIBRARY_PATH");
        environment.emplace_back("LD_LIBRARY_PATH", path && *path ? folder + ':' + path : folder);
    }
    return environment;
}

/// One run of the host.
class Run
{
public:
    Run(const RecordOptions &options, const FoundLibrary &found, SharedRing &ring, CaptureFile &file,
        std::uint32_t session)
        : control(ring.control())
        , consumer(control)
        , started(Clocks::now())
        , recording(file, session, started)
        , lastClocks(started)
        , host(options.command, environmentOf(options, ring, found.path), signals.previousMask())
    {
    }

    int startError() const { return host.error(); }
    bool hasOwner() const { return control.owner != 0; }
    std::uint64_t lost() const { return recording.lost(); }

    ProcessEnd watch(const std::string &note, const std::function<void(const Progress &)> &report)
    {
        const ProcessHandle hostHandle(host.id());
        recording.writeStatus(started, control);
        if (!note.empty())
            recording.writeMark(note, started.monotonicNs);
        for (;;) {
            const bool isLast = isOver();
            drain(hasOwner() && ownerHasEnded());
            if (isLast)
                break;
            wait(hostHandle);
            passSignals();
            keepTime(report);
        }
        recording.writeEnd(endOfOwner(), consumer.lostAtEnd(), Clocks::now(), control);
        return *host.end();
    }

private:
    /// Of the process that holds the library; true as long as there is none.
    bool ownerHasEnded()
    {
        const pid_t owner = control.owner;
        if (owner == 0)
            return true;
        if (owner == host.id())
            return host.end().has_value();
        if (!ownerHandle)
            ownerHandle = std::make_unique<ProcessHandle>(owner);
        return ownerHandle->hasEnded();
    }

    bool isOver()
    {
        if (!host.end())
            return false;
        // What the host has left behind may still open the library.
        const bool isWaiting = !hasOwner() && !isToldToEnd && orphans.areLeft();
        return !isWaiting && ownerHasEnded();
    }

    void drain(bool isOwnerDead)
    {
        ring::Taken taken;
        while (consumer.take(taken, isOwnerDead) == ring::Consumer::Step::Record)
            recording.write(taken);
    }

    void wait(const ProcessHandle &hostHandle)
    {
        pollfd waited[3] = {{signals.descriptor(), POLLIN, 0}, {-1, POLLIN, 0}, {-1, POLLIN, 0}};
        if (!host.end())
            waited[1].fd = hostHandle.descriptor();
        if (ownerHandle && !ownerHandle->hasEnded())
            waited[2].fd = ownerHandle->descriptor();
        poll(waited, 3, drainIntervalMs);
    }

    /// To the host, and behind its end to the process that holds the library.
    void passSignals()
    {
        for (int number = signals.take(); number != 0; number = signals.take()) {
            const bool isForHost = number == SIGTERM || number == SIGHUP;
            if (!host.end() && isForHost)
                host.signal(number);
            else if (host.end() && ownerHandle && isForHost)
                ownerHandle->signal(number);
            else if (host.end() && number != SIGXFSZ)
                isToldToEnd = true;
        }
    }

    void keepTime(const std::function<void(const Progress &)> &report)
    {
        const Clocks now = Clocks::now();
        const auto stepNs = static_cast<std::int64_t>((now.realNs - lastClocks.realNs) -
                                                      (now.monotonicNs - lastClocks.monotonicNs));
        const bool hasStepped = std::llabs(stepNs) > static_cast<std::int64_t>(clockStepNs);
        if (hasStepped || now.monotonicNs - lastStatusNs >= statusIntervalNs) {
            recording.writeStatus(now, control);
            lastStatusNs = now.monotonicNs;
        }
        lastClocks = now;
        if (now.monotonicNs - lastProgressNs < progressIntervalNs)
            return;
        lastProgressNs = now.monotonicNs;
        const std::uint64_t elapsedNs = now.monotonicNs - started.monotonicNs;
        report({static_cast<double>(elapsedNs) / 1e9, recording.reports(), recording.lost()});
    }

    capture::End endOfOwner()
    {
        capture::End end;
        if (control.owner != host.id() && control.owner != 0)
            return end; // how it ended is known only of a child
        const ProcessEnd hostEnd = *host.end();
        end.reason = hostEnd.isSignal ? capture::EndReason::Signal : capture::EndReason::Exit;
        end.value = hostEnd.value;
        return end;
    }

    ring::Control &control;
    ring::Consumer consumer;
    Clocks started;
    Recording recording;
    Clocks lastClocks;
    SignalInbox signals;
    Orphans orphans;
    HostProcess host;
    std::unique_ptr<ProcessHandle> ownerHandle; ///< of one that is not the host
    bool isToldToEnd = false;
    std::uint64_t lastStatusNs = started.monotonicNs;
    std::uint64_t lastProgressNs = started.monotonicNs;
};

int statusOf(const ProcessEnd &end)
{
    return end.isSignal ? 128 + end.value : end.value;
}

std::string whyNothingWasRecorded(const RecordOptions &options, const FoundLibrary &found)
{
    const std::string &library = options.driver.empty() ? found.path : options.driver;
    if (library.empty())
        return "nothing was recorded: " + options.command.front() +
               " has handed over no driver library, and there is none in " + found.places;
    return "nothing was recorded: " + options.command.front() +
           " has not opened the driver library through the tap: " + library;
}

/// What is to be said behind a recording.
std::vector<std::string> remarks(const ring::Control &control, std::uint64_t lost)
{
    std::vector<std::string> lines;
    if (lost > 0)
        lines.push_back("lost reports and calls: " + std::to_string(lost));
    if (const std::uint32_t others = control.forwardingProcesses)
        lines.push_back("processes that opened the driver library and were not recorded: " +
                        std::to_string(others));
    if (const std::uint32_t callbacks = control.unrecordedCallbacks)
        lines.push_back("callbacks that were not recorded, beyond 32 of one sort: " +
                        std::to_string(callbacks));
    return lines;
}

} // namespace

RecordResult record(const RecordOptions &options, const std::function<void(const Progress &)> &report)
{
    const std::uint32_t session = randomSession();
    SharedRing ring(options.ringSize, session);
    if (!ring.error().empty())
        return {1, {ring.error()}};
    CaptureFile file(options.output);
    if (!file.isOpen())
        return {1, {options.output + ": " + file.error()}};
    const FoundLibrary found = findDriverLibrary(options.command.front(), options.tap);
    Run run(options, found, ring, file, session);
    if (run.startError() != 0) {
        file.remove();
        return {run.startError() == ENOENT ? notFound : notExecutable,
                {options.command.front() + ": " + std::strerror(run.startError())}};
    }
    const int hostStatus = statusOf(run.watch(options.note, report));
    RecordResult result{hostStatus == 0 ? 1 : hostStatus, {}};
    if (!run.hasOwner()) {
        file.remove();
        result.lines.push_back(whyNothingWasRecorded(options, found));
    } else if (!file.error().empty()) {
        result.lines.push_back(options.output + ": " + file.error());
    } else {
        result.status = hostStatus;
    }
    for (const std::string &line : remarks(ring.control(), run.lost()))
        result.lines.push_back(line);
    return result;
}

} // namespace recorder
