#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "consumer.h"
#include "groupwitness.h"
#include "hostprocess.h"
#include "markinbox.h"
#include "orphans.h"
#include "recording.h"

namespace recorder {

struct Progress
{
    double seconds = 0;
    std::uint64_t reports = 0;
    std::uint64_t lost = 0;
    bool isWaitingForOthers = false; ///< the host has ended, and nobody has opened the library
};

/// One run of the host: takes what crosses out of the ring until both the host and the process that holds the
/// library have ended.
class HostRun
{
public:
    /// Starts the host.
    HostRun(const std::vector<std::string> &command, const HostProcess::Environment &environment,
            const SignalInbox &signals, marking::MarkInbox &marks, ring::Control &ring, Recording &capture,
            const Clocks &start);

    /// 0, or the error number of the start. Nothing else may be called then.
    int startError() const { return host.error(); }
    bool hasOwner() const { return control.owner != 0; }

    /// \param report called once a second
    /// \return the host's end
    ProcessEnd watch(const std::string &note, const std::function<void(const Progress &)> &report);

private:
    using Step = ring::Consumer::Step;

    bool ownerHasEnded();
    bool isOver();
    Step drain(bool isOwnerDead);
    void wait(const ProcessHandle &hostHandle, int timeoutMs);
    void takeMarks();
    void writeMarks(std::uint64_t untilNs);
    void passSignals(std::uint64_t nowNs);
    void pass(int number);
    void keepTime(const Clocks &now, bool isUpToDate, const std::function<void(const Progress &)> &report);
    capture::End endOfOwner();

    ring::Control &control;
    ring::Consumer consumer;
    Recording &recording;
    Clocks started;
    Clocks lastClocks;
    const SignalInbox &signals;
    marking::MarkInbox &markInbox;
    std::deque<marking::Mark> marks;   ///< that are not written, by their times
    std::map<int, std::uint64_t> held; ///< signals, and when they are passed on
    GroupWitness witness;
    Orphans orphans;
    HostProcess host;
    std::unique_ptr<ProcessHandle> ownerHandle; ///< of one that is not the host
    bool isToldToEnd = false;
    std::uint64_t lastStatusNs;
    std::uint64_t lastProgressNs;
};

} // namespace recorder
