#include "recordrun.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/random.h>

#include "capturefile.h"
#include "librarysearch.h"
#include "recording.h"

namespace recorder {

namespace {

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

std::unique_ptr<Output> outputOf(const RecordOptions &options, const ring::Control &control)
{
    if (options.trigger)
        return std::make_unique<Slices>(options.output, *options.trigger, !options.note.empty(), control);
    return std::make_unique<CaptureFile>(options.output);
}

std::string whyNothingWasRecorded(const RecordOptions &options, const FoundLibrary &found,
                                  const ring::Control &control)
{
    const std::string start = "nothing was recorded: " + options.command.front();
    const std::string &library = options.driver.empty() ? found.path : options.driver;
    // The host may have handed over another one than that which was found; the tap has named it.
    if (control.failedOpenings > 0)
        return start + " has opened the tap, which could not load the driver library and has said why";
    // A tap that cannot reach the ring has said so, and cannot tell it here.
    if (library.empty())
        return start +
               " has handed over no driver library to a tap that could record, and there is none in " +
               found.places;
    return start + " has not opened the driver library through a tap that could record: " + library;
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
    if (control.timesPassedBy > 0)
        lines.push_back(
            "the driver library stayed open when it was closed through the tap: what used it later is "
            "not recorded");
    if (const std::uint32_t callbacks = control.unrecordedCallbacks)
        lines.push_back("callbacks that were not recorded, beyond 32 of one sort: " +
                        std::to_string(callbacks));
    return lines;
}

} // namespace

RecordResult record(const RecordOptions &options, const std::function<void(const Progress &)> &report)
{
    const SignalInbox signals; // from here on, as memory or a file that reaches its limit sends one
    const std::uint32_t session = randomSession();
    SharedRing ring(options.ringSize, session);
    if (!ring.error().empty())
        return {1, {ring.error()}};
    const std::unique_ptr<Output> output = outputOf(options, ring.control());
    if (!output->error().empty())
        return {1, {output->path() + ": " + output->error()}};
    const Clocks start = Clocks::now();
    Recording recording(*output, session, start);
    if (!output->error().empty()) {
        output->remove();
        return {1, {output->path() + ": " + output->error()}};
    }
    const FoundLibrary found = findDriverLibrary(options.command.front(), options.tap);
    marking::MarkInbox marks(session);
    HostRun run(options.command, environmentOf(options, ring, found.path), signals, marks, ring.control(),
                recording, start);
    if (run.startError() != 0) {
        output->remove();
        return {statusOfStartError(run.startError()),
                {options.command.front() + ": " + std::strerror(run.startError())}};
    }
    const int hostStatus = statusOf(run.watch(options.note, report));
    RecordResult result{hostStatus == 0 ? 1 : hostStatus, {}};
    if (!run.hasOwner())
        output->remove();
    output->close();
    if (!run.hasOwner()) {
        result.lines.push_back(whyNothingWasRecorded(options, found, ring.control()));
    } else if (!output->error().empty()) {
        result.lines.push_back(output->path() + ": " + output->error());
    } else {
        result.status = hostStatus;
    }
    for (const std::string &line : output->remarks())
        result.lines.push_back(line);
    for (const std::string &line : remarks(ring.control(), recording.lost()))
        result.lines.push_back(line);
    return result;
}

} // namespace recorder
