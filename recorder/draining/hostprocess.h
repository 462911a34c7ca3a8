#pragma once

#include <csignal>
#include <optional>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace recorder {

/// How a process ended.
struct ProcessEnd
{
    bool isKnown = true;
    bool isSignal = false;
    int value = 0; ///< the exit status, or the signal's number
};

/// The status to end with in its place, as a shell has it.
int statusOf(const ProcessEnd &end);
/// The same for one that could not be started, by the error number.
int statusOfStartError(int error);

/// A process as a descriptor that becomes readable when it ends.
class ProcessHandle
{
public:
    explicit ProcessHandle(pid_t processId);
    ~ProcessHandle();
    ProcessHandle(const ProcessHandle &) = delete;
    ProcessHandle &operator=(const ProcessHandle &) = delete;

    /// -1 when there is none, as of a process that was gone before.
    int descriptor() const { return file; }
    bool hasEnded() const;
    void signal(int number) const;

private:
    pid_t process;
    int file;
};

/// The host, started as if it were started alone: with the terminal, streams, process group, signal mask and
/// dispositions that this process has found.
class HostProcess
{
public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    /// \param added variables that are set, or replaced
    /// \param mask its signal mask
    HostProcess(const std::vector<std::string> &command, const Environment &added, const sigset_t &mask);
    ~HostProcess();
    HostProcess(const HostProcess &) = delete;
    HostProcess &operator=(const HostProcess &) = delete;

    /// 0, or the error number of the start.
    int error() const { return startError; }
    pid_t id() const { return process; }

    /// Nothing while it runs.
    std::optional<ProcessEnd> end();
    /// Passes a signal on, unless it has ended.
    void signal(int number) const;

private:
    pid_t process = -1;
    int startError = 0;
    void (*childHandler)(int) = nullptr; ///< that was in force before
    std::optional<ProcessEnd> ended;
};

/// While in scope, this process ignores what the terminal sends to the host as well, and gets SIGTERM,
/// SIGHUP and SIGUSR2 as numbers.
class SignalInbox
{
public:
    SignalInbox();
    ~SignalInbox();
    SignalInbox(const SignalInbox &) = delete;
    SignalInbox &operator=(const SignalInbox &) = delete;

    /// The mask that was in force before, which the host is started with.
    const sigset_t &previousMask() const { return previous; }
    /// Readable when take() has a signal.
    int descriptor() const { return file; }
    /// 0 when there is none.
    int take() const;

private:
    sigset_t previous;
    int file;
};

} // namespace recorder
