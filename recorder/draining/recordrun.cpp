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

HostProcess::Environment environmentOf(const RecordOptions &options, const SharedRing &ring)
{
    const std::string folder = options.tap.substr(0, options.tap.rfind('/'));
    const char *path = std::getenv("LD_LIBRARY_PATH");
    HostProcess::Environment environment{
        {"PADSCOPE_RING", ring.path()},
        {"PADSCOPE_TAP", options.tap},
        {"LD_LIBRARY_PATH", path && *path ? folder + ':' + path : folder},
    };
    if (!options.driver.empty())
        environment.emplace_back("PADSCOPE_DRIVER", options.driver);
    return environment;
}

/// One run of the host.
class Run
{
public:
    Run(const RecordOptions &options, SharedRing &ring, CaptureFile &file, std::uint32_t session)
        : control(ring.control())
        , consumer(control)
        , started(Clocks::now())
        , recording(file, session, started)
        , lastClocks(started)
        , host(options.command, environmentOf(options, ring), signals.previousMask())
    {
    }

    int startError() const { return host.error(); }
    bool hasOwner() const { return control.owner != 0; }
    const Recording &result() const { return recording; }

    ProcessEnd watch(const std::string &note, const std::function<void(const Progress &)> &report)
    {
        const ProcessHandle hostHandle(host.id());
        recording.writeStatus(started, control);
        if (!note.empty())
            recording.writeMark(note, started.monotonicNs);
        for (;;) {
            const bool isOver = host.end() && ownerHasEnded();
            const bool wasDrained = drain(isOver);
            if (isOver && wasDrained)
                break;
            wait(hostHandle);
            passSignals();
            keepTime(report);
        }
        recording.writeEnd(endOfOwner(), consumer.lostAtEnd(), Clocks::now(), control);
        return *host.end();
    }

private:
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

    /// \return whether the ring is empty
    bool drain(bool isOwnerDead)
    {
        ring::Taken taken;
        ring::Consumer::Step step = consumer.take(taken, isOwnerDead);
        for (; step == ring::Consumer::Step::Record; step = consumer.take(taken, isOwnerDead))
            recording.write(taken);
        return step == ring::Consumer::Step::Empty;
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

    void passSignals()
    {
        for (int number = signals.take(); number != 0; number = signals.take()) {
            if (number == SIGTERM || number == SIGHUP)
                host.signal(number);
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
    HostProcess host;
    std::unique_ptr<ProcessHandle> ownerHandle;
    std::uint64_t lastStatusNs = started.monotonicNs;
    std::uint64_t lastProgressNs = started.monotonicNs;
};

int statusOf(const ProcessEnd &end)
{
    return end.isSignal ? 128 + end.value : end.value;
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
    Run run(options, ring, file, session);
    if (run.startError() != 0) {
        file.remove();
        return {run.startError() == ENOENT ? notFound : notExecutable,
                {options.command.front() + ": " + std::strerror(run.startError())}};
    }
    RecordResult result;
    result.status = statusOf(run.watch(options.note, report));
    if (!run.hasOwner()) {
        file.remove();
        result.lines.push_back(options.command.front() +
                               " did not open the driver library: nothing was recorded");
        result.status = result.status == 0 ? 1 : result.status;
    } else if (!file.error().empty()) {
        result.lines.push_back(options.output + ": " + file.error());
        result.status = result.status == 0 ? 1 : result.status;
    }
    if (const std::uint32_t others = ring.control().forwardingProcesses)
        result.lines.push_back(std::to_string(others) +
                               " more processes opened the driver library and were not recorded");
    return result;
}

} // namespace recorder
