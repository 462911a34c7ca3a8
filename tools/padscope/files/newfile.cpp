#include "newfile.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace padscope {

namespace {

constexpr std::size_t bufferSize = 256 * 1024;
constexpr int endingSignals[] = {SIGHUP, SIGINT, SIGTERM};

char nameToRemove[PATH_MAX]; ///< read by the handler

/// The signal ends the process when the handler returns.
extern "C" void removeOnSignal(int signal)
{
    unlink(nameToRemove);
    raise(signal);
}

/// Those that are ignored, as in the background of a script, stay so.
void handleSignals(void (*handler)(int))
{
    for (const int signal : endingSignals) {
        struct sigaction action
        {
        };
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action.sa_handler = handler;
        action.sa_flags = SA_RESETHAND;
        sigaction(signal, &action, nullptr);
    }
}

bool exists(const std::string &path)
{
    struct stat info
    {
    };
    return lstat(path.c_str(), &info) == 0;
}

/// It was created for its owner alone.
void followUmask(int file)
{
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(file, 0666 & ~mask);
}

/// Replaces nothing. Where the file system can't rename like that, it can link.
bool renameWithoutReplacing(const std::string &from, const std::string &to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    return errno == EINVAL && link(from.c_str(), to.c_str()) == 0 && unlink(from.c_str()) == 0;
}

} // namespace

NewFile::NewFile(const std::string &filePath, Access access)
    : path(filePath)
{
    std::string name = path + ".XXXXXX";
    if (exists(path))
        errno = EEXIST;
    else if (name.size() < sizeof nameToRemove)
        file = mkostemp(name.data(), O_CLOEXEC);
    else
        errno = ENAMETOOLONG;
    if (file < 0) {
        trouble = std::strerror(errno);
        return;
    }
    temporary = name;
    if (access == Access::Umask)
        followUmask(file);
    std::copy(name.c_str(), name.c_str() + name.size() + 1, nameToRemove);
    handleSignals(removeOnSignal);
    std::signal(SIGXFSZ, SIG_IGN); // a limit of a file's size is an error of writing
}

NewFile::~NewFile()
{
    removeTemporary();
}

void NewFile::removeTemporary()
{
    if (file >= 0)
        close(file);
    file = -1;
    if (temporary.empty())
        return;
    unlink(temporary.c_str());
    temporary.clear();
    handleSignals(SIG_DFL);
}

void NewFile::fail()
{
    trouble = std::strerror(errno);
    removeTemporary();
}

void NewFile::write(std::string_view bytes)
{
    buffer += bytes;
    if (buffer.size() >= bufferSize)
        flush();
}

void NewFile::flush()
{
    std::string_view rest = buffer;
    while (!rest.empty() && trouble.empty()) {
        const ssize_t count = ::write(file, rest.data(), rest.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail();
        else
            rest.remove_prefix(static_cast<std::size_t>(count));
    }
    buffer.clear();
}

bool NewFile::finish()
{
    flush();
    if (!trouble.empty())
        return false;
    const int written = file;
    file = -1;
    // What was written last may fail only now, on a file system of another machine.
    if (close(written) != 0 || !renameWithoutReplacing(temporary, path))
        fail();
    else
        temporary.clear();
    handleSignals(SIG_DFL);
    return trouble.empty();
}

} // namespace padscope
