#include "hostrun.h"

#include <algorithm>
#include <cstdlib>
#include <poll.h>
#include <unistd.h>

namespace recorder {

namespace {

constexpr int drainIntervalMs = 20;
constexpr int maxRecordsAtOnce = 256;
constexpr std::uint64_t groupSignalNs = groupSignalMs * std::uint64_t{1'000'000};
constexpr std::uint64_t statusIntervalNs = 10'000'000'000;
constexpr std::uint64_t progressIntervalNs = 1'000'000'000;
constexpr std::uint64_t clockStepNs = 100'000'000; ///< of the wall clock, that is told at once

} // namespace

HostRun::HostRun(const std::vector<std::string> &command, const HostProcess::Environment &environment,
                 const SignalInbox &inbox, marking::MarkInbox &requests, ring::Control &ring,
                 Recording &capture, const Clocks &start)
    : control(ring)
    , consumer(ring)
    , recording(capture)
    , started(start)
    , lastClocks(start)
    , signals(inbox)
    , markInbox(requests)
    , host(command, environment, signals.previousMask())
    , lastStatusNs(start.monotonicNs)
    , lastProgressNs(start.monotonicNs)
{
}

ProcessEnd HostRun::watch(const std::string &note, const std::function<void(const Progress &)> &report)
{
    const ProcessHandle hostHandle(host.id());
    recording.writeStatus(started, control);
    if (!note.empty())
        recording.writeMark({started.monotonicNs, note});
    for (;;) {
        const bool isEnding = isOver();
        const Clocks now = Clocks::now();
        const Step last = drain(hasOwner() && ownerHasEnded());
        if (last == Step::Empty)
            writeMarks(now.monotonicNs);
        if (last != Step::Record)
            recording.flush();
        if (last == Step::Empty)
            recording.passTime(now.monotonicNs);
        keepTime(now, last == Step::Empty, report);
        if (isEnding && last != Step::Record)
            break;
        const int intervalMs = held.empty() ? drainIntervalMs : groupSignalMs;
        wait(hostHandle, last == Step::Record ? 0 : intervalMs);
        passSignals(Clocks::now().monotonicNs);
        takeMarks();
    }
    writeMarks(UINT64_MAX);
    recording.writeEnd(endOfOwner(), consumer.lostAtEnd(), Clocks::now(), control);
    return *host.end();
}

/// Of the process that holds the library; true as long as there is none.
bool HostRun::ownerHasEnded()
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

bool HostRun::isOver()
{
    if (!host.end())
        return false;
    // What the host has left behind may still open the library.
    const bool isWaiting = !hasOwner() && !isToldToEnd && orphans.areLeft(witness.id());
    return !isWaiting && ownerHasEnded();
}

/// Signals and clocks do not wait for a file that is slower than the boards.
/// \return what there is next; a record when there may be more of them
HostRun::Step HostRun::drain(bool isOwnerDead)
{
    ring::Taken taken;
    for (int i = 0; i < maxRecordsAtOnce; ++i) {
        const Step step = consumer.take(taken, isOwnerDead);
        if (step != Step::Record)
            return step;
        writeMarks(taken.clockNs);
        recording.write(taken);
    }
    return Step::Record;
}

void HostRun::wait(const ProcessHandle &hostHandle, int timeoutMs)
{
    pollfd waited[4] = {{signals.descriptor(), POLLIN, 0},
                        {markInbox.descriptor(), POLLIN, 0},
                        {-1, POLLIN, 0},
                        {-1, POLLIN, 0}};
    if (!host.end())
        waited[2].fd = hostHandle.descriptor();
    if (ownerHandle && !ownerHandle->hasEnded())
        waited[3].fd = ownerHandle->descriptor();
    poll(waited, 4, timeoutMs);
}

/// No mark is of a moment that is still to come.
void HostRun::takeMarks()
{
    while (std::optional<marking::Mark> mark = markInbox.take()) {
        mark->askedNs = std::min(mark->askedNs, Clocks::now().monotonicNs);
        const auto place =
            std::upper_bound(marks.begin(), marks.end(), *mark,
                             [](const auto &one, const auto &other) { return one.askedNs < other.askedNs; });
        marks.insert(place, std::move(*mark));
    }
}

/// Those that come before what crosses at a time.
void HostRun::writeMarks(std::uint64_t untilNs)
{
    while (!marks.empty() && marks.front().askedNs <= untilNs) {
        recording.writeMark(marks.front());
        marks.pop_front();
    }
}

/// What may have been sent to the whole group waits until that has shown.
void HostRun::passSignals(std::uint64_t nowNs)
{
    for (int number = signals.take(); number != 0; number = signals.take()) {
        if (number == SIGUSR2)
            marks.push_back(markInbox.numbered({Clocks::now().monotonicNs, {}, number}));
        else if (number == SIGTERM || number == SIGHUP)
            held.emplace(number, nowNs + groupSignalNs);
        else if (host.end() && number != SIGXFSZ)
            isToldToEnd = true;
    }
    for (auto signal = held.begin(); signal != held.end();) {
        if (signal->second > nowNs) {
            ++signal;
            continue;
        }
        pass(signal->first);
        signal = held.erase(signal);
    }
}

/// To the host, or behind its end to the process that holds the library, unless it has got it already.
void HostRun::pass(int number)
{
    const bool isOfGroup = witness.hasSeen(number);
    if (!host.end() && !(isOfGroup && getpgid(host.id()) == getpgrp()))
        host.signal(number);
    else if (host.end() && ownerHandle && !(isOfGroup && getpgid(control.owner) == getpgrp()))
        ownerHandle->signal(number);
    else if (host.end() && !ownerHandle)
        isToldToEnd = true;
}

/// \param isUpToDate what had crossed at that time is written
void HostRun::keepTime(const Clocks &now, bool isUpToDate,
                       const std::function<void(const Progress &)> &report)
{
    const auto stepNs = static_cast<std::int64_t>((now.realNs - lastClocks.realNs) -
                                                  (now.monotonicNs - lastClocks.monotonicNs));
    const bool hasStepped = std::llabs(stepNs) > static_cast<std::int64_t>(clockStepNs);
    if (hasStepped || now.monotonicNs - lastStatusNs >= statusIntervalNs) {
        // Of the very moment of its stamp, as readers take the wall clock's offset from both.
        const std::uint64_t lastNs = recording.lastCrossingNs();
        recording.writeStatus(now.at(isUpToDate ? std::max(now.monotonicNs, lastNs) : lastNs), control);
        lastStatusNs = now.monotonicNs;
    }
    lastClocks = now;
    if (now.monotonicNs - lastProgressNs < progressIntervalNs)
        return;
    lastProgressNs = now.monotonicNs;
    Orphans::reap(host.id(), witness.id());
    const std::uint64_t elapsedNs = now.monotonicNs - started.monotonicNs;
    report({static_cast<double>(elapsedNs) / 1e9, recording.reports(), recording.lost(),
            host.end().has_value() && !hasOwner()});
}

capture::End HostRun::endOfOwner()
{
    capture::End end;
    const ProcessEnd hostEnd = *host.end();
    if (control.owner != host.id() && control.owner != 0) {
        end.value = statusOf(hostEnd); // how the owner ended is known only of a child
        return end;
    }
    if (!hostEnd.isKnown)
        return end;
    end.reason = hostEnd.isSignal ? capture::EndReason::Signal : capture::EndReason::Exit;
    end.value = hostEnd.value;
    return end;
}

} // namespace recorder
