#include "capturefiles.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace padscope {

InputFile::InputFile(const std::string &path)
    : shown(path == "-" ? "standard input" : path)
    , file(path == "-" ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (file < 0)
        printError(shown + ": " + std::strerror(errno));
}

InputFile::~InputFile()
{
    if (file >= 0)
        close(file);
}

bool InputFile::canGrow() const
{
    struct stat info
    {
    };
    return fstat(file, &info) == 0 && S_ISREG(info.st_mode);
}

void Completeness::follow(const capture::Record &record)
{
    hasEnd[record.header.session] = record.header.kindOf() == capture::Kind::End;
    hasLost = hasLost || record.header.lost > 0;
}

bool Completeness::isComplete() const
{
    return !hasLost && !hasEnd.empty() &&
           std::all_of(hasEnd.begin(), hasEnd.end(), [](const auto &session) { return session.second; });
}

Status Completeness::status(const InputFile &input, const capture::RecordReader &reader,
                            capture::pcapng::Event last) const
{
    if (last == capture::pcapng::Event::Damage) {
        const capture::pcapng::Damage &damage = reader.damage();
        printError(input.name() + ": byte " + std::to_string(damage.offset) + ": " + damage.reason);
        return Failed;
    }
    return isComplete() && !reader.file().endsWithinBlock() ? Good : Incomplete;
}

void printError(const std::string &line)
{
    std::fprintf(stderr, "padscope: %s\n", line.c_str());
}

void ignoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

Status statusOfOutputError()
{
    if (errno == EPIPE)
        return Good;
    printError(std::string("standard output: ") + std::strerror(errno));
    return Failed;
}

} // namespace padscope
