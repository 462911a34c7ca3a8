#include "orphans.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace recorder {

namespace {

/// What /proc/<process>/stat tells, as far as it is used.
struct ProcessState
{
    char state = 0; ///< 'Z' has ended
    pid_t parent = 0;
    pid_t session = 0;
};

ProcessState stateOf(pid_t process)
{
    ProcessState read;
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    std::getline(file, line);
    // The name before it may hold anything.
    const std::size_t name = line.rfind(')');
    if (name != std::string::npos)
        std::sscanf(line.c_str() + name + 1, " %c %d %*d %d", &read.state, &read.parent, &read.session);
    return read;
}

std::set<pid_t> childrenOf(pid_t parent)
{
    std::set<pid_t> children;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator("/proc", error)) {
        const pid_t process = std::atoi(entry.path().filename().c_str());
        if (process > 0 && stateOf(process).parent == parent)
            children.insert(process);
    }
    return children;
}

} // namespace

Orphans::Orphans()
    : others(childrenOf(getpid()))
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
}

Orphans::~Orphans()
{
    prctl(PR_SET_CHILD_SUBREAPER, 0);
}

void Orphans::reap(pid_t host, pid_t witness)
{
    for (;;) {
        siginfo_t ended{};
        if (waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) != 0 || ended.si_pid == 0 ||
            ended.si_pid == host || ended.si_pid == witness)
            return;
        waitpid(ended.si_pid, nullptr, WNOHANG);
    }
}

bool Orphans::areLeft(pid_t witness) const
{
    for (const pid_t child : childrenOf(getpid())) {
        const ProcessState now = stateOf(child);
        const bool isOrphan = child != witness && others.count(child) == 0;
        if (isOrphan && now.state != 'Z' && now.session == getsid(0))
            return true;
    }
    return false;
}

} // namespace recorder
