#include "hostprocess.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "spawnarguments.h"

namespace recorder {

namespace {

constexpr int notExecutable = 126;
constexpr int notFound = 127;
constexpr int unknownStatus = 255;

/// The environment with some variables replaced.
std::vector<std::string> environmentWith(const HostProcess::Environment &added)
{
    std::vector<std::string> variables;
    for (char **variable = environ; *variable; ++variable) {
        const std::string text = *variable;
        bool isReplaced = false;
        for (const auto &[name, value] : added)
            isReplaced = isReplaced || text.compare(0, name.size() + 1, name + '=') == 0;
        if (!isReplaced)
            variables.push_back(text);
    }
    for (const auto &[name, value] : added)
        variables.emplace_back(name).append("=").append(value);
    return variables;
}

/// In the child: starts the host, or tells through the pipe why it could not.
[[noreturn]] void runHost(const std::vector<char *> &arguments, const std::vector<char *> &variables,
                          const sigset_t &mask, int errors)
{
    sigprocmask(SIG_SETMASK, &mask, nullptr);
    execvpe(arguments.front(), arguments.data(), variables.data());
    const int error = errno;
    if (write(errors, &error, sizeof error) != sizeof error)
        std::abort();
    _exit(0);
}

sigset_t ownSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    // The last one comes of a file that has reached its limit, for which the write fails as well.
    for (const int number : {SIGTERM, SIGHUP, SIGUSR2, SIGINT, SIGQUIT, SIGXFSZ})
        sigaddset(&signals, number);
    return signals;
}

} // namespace

int statusOf(const ProcessEnd &end)
{
    if (!end.isKnown)
        return unknownStatus;
    return end.isSignal ? 128 + end.value : end.value;
}

int statusOfStartError(int error)
{
    return error == ENOENT ? notFound : notExecutable;
}

ProcessHandle::ProcessHandle(pid_t processId)
    : process(processId)
    , file(static_cast<int>(syscall(SYS_pidfd_open, process, 0)))
{
}

ProcessHandle::~ProcessHandle()
{
    if (file >= 0)
        close(file);
}

bool ProcessHandle::hasEnded() const
{
    if (file < 0)
        return process <= 0 || (kill(process, 0) != 0 && errno == ESRCH);
    pollfd waited{file, POLLIN, 0};
    return poll(&waited, 1, 0) > 0 && (waited.revents & POLLIN) != 0;
}

void ProcessHandle::signal(int number) const
{
    if (file >= 0)
        syscall(SYS_pidfd_send_signal, file, number, nullptr, 0);
}

HostProcess::HostProcess(const std::vector<std::string> &command, const Environment &added,
                         const sigset_t &mask)
{
    // Where its parent has had it ignored, the host's end would not be told; the host has it ignored as well.
    childHandler = std::signal(SIGCHLD, SIG_DFL);
    const std::vector<std::string> variables = environmentWith(added);
    const std::vector<char *> argumentPointers = pointersTo(command);
    const std::vector<char *> variablePointers = pointersTo(variables);
    int errors[2];
    if (pipe2(errors, O_CLOEXEC) != 0) {
        startError = errno;
        return;
    }
    process = fork();
    if (process == 0) {
        std::signal(SIGCHLD, childHandler);
        runHost(argumentPointers, variablePointers, mask, errors[1]);
    }
    startError = process < 0 ? errno : 0;
    close(errors[1]);
    // It is closed by the start of the host.
    if (process > 0 && read(errors[0], &startError, sizeof startError) > 0)
        waitpid(process, nullptr, 0);
    close(errors[0]);
}

HostProcess::~HostProcess()
{
    std::signal(SIGCHLD, childHandler);
}

std::optional<ProcessEnd> HostProcess::end()
{
    if (ended)
        return ended;
    int status = 0;
    const pid_t waited = waitpid(process, &status, WNOHANG);
    if (waited < 0 && errno == ECHILD)
        ended = ProcessEnd{false, false, 0};
    else if (waited == process && WIFSIGNALED(status))
        ended = ProcessEnd{true, true, WTERMSIG(status)};
    else if (waited == process && WIFEXITED(status))
        ended = ProcessEnd{true, false, WEXITSTATUS(status)};
    return ended;
}

void HostProcess::signal(int number) const
{
    if (!ended)
        kill(process, number);
}

SignalInbox::SignalInbox()
{
    const sigset_t signals = ownSignals();
    sigprocmask(SIG_BLOCK, &signals, &previous);
    file = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

SignalInbox::~SignalInbox()
{
    while (take() != 0) {
    }
    close(file);
    sigprocmask(SIG_SETMASK, &previous, nullptr);
}

int SignalInbox::take() const
{
    signalfd_siginfo info{};
    return read(file, &info, sizeof info) == sizeof info ? static_cast<int>(info.ssi_signo) : 0;
}

} // namespace recorder
