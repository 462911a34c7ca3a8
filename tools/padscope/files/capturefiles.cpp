#include "capturefiles.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "escaping.h"

namespace padscope {

namespace {

constexpr std::size_t maxPrintedSessions = 20;

} // namespace

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

std::uint64_t InputFile::size() const
{
    struct stat info
    {
    };
    const bool isKnown = fstat(file, &info) == 0 && S_ISREG(info.st_mode);
    return isKnown ? static_cast<std::uint64_t>(info.st_size) : 0;
}

bool InputFile::hasMore() const
{
    pollfd input{file, POLLIN, 0};
    return poll(&input, 1, 0) > 0;
}

void Completeness::follow(const capture::Record &record)
{
    Session &session = sessions[record.header.session];
    session.hasEnd = record.header.kindOf() == capture::Kind::End;
    session.lost += record.header.lost;
}

bool Completeness::hasEnded() const
{
    return !sessions.empty() && std::all_of(sessions.begin(), sessions.end(),
                                            [](const auto &entry) { return entry.second.hasEnd; });
}

bool Completeness::isComplete() const
{
    return !sessions.empty() && std::all_of(sessions.begin(), sessions.end(),
                                            [](const auto &entry) { return entry.second.isComplete(); });
}

void Completeness::printReasons(const InputFile &input) const
{
    const auto print = [&input](std::uint32_t session, const std::string &what) {
        printError(input.name() + ": session " + sessionName(session) + ": " + what);
    };
    std::size_t incomplete = 0;
    for (const auto &[number, session] : sessions) {
        if (session.isComplete() || ++incomplete > maxPrintedSessions)
            continue;
        if (!session.hasEnd)
            print(number, "no clean end");
        if (session.lost > 0)
            print(number, std::to_string(session.lost) + " lost");
    }
    if (incomplete > maxPrintedSessions)
        printError(input.name() + ": " + std::to_string(incomplete - maxPrintedSessions) +
                   " more sessions that are not complete");
}

Status Completeness::status(const InputFile &input, const capture::RecordReader &reader,
                            capture::pcapng::Event last) const
{
    if (const capture::Skipped &skipped = reader.skipped(); skipped.newVersions > 0)
        printErrorAt(input, skipped.newVersionOffset,
                     "a packet of a later version of the format; " + std::to_string(skipped.newVersions) +
                         " of these are passed by");
    const auto damage = damageOf(reader, last);
    if (damage)
        printErrorAt(input, damage->offset, damage->reason);
    if (last == capture::pcapng::Event::Damage || reader.skipped().newVersions > 0)
        return Failed;
    if (sessions.empty() && !damage && reader.file().offset() > 0)
        printError(input.name() + ": no packet of a capture in it");
    return isComplete() && !reader.file().endsWithinBlock() ? Good : Incomplete;
}

Status Completeness::statusOfWhole(const InputFile &input, const capture::RecordReader &reader,
                                   capture::pcapng::Event last) const
{
    const Status found = status(input, reader, last);
    const bool isOther = sessions.empty() && reader.skipped().newVersions == 0;
    return last == capture::pcapng::Event::Damage || isOther ? Usage : found;
}

std::optional<capture::pcapng::Damage> damageOf(const capture::RecordReader &reader,
                                                capture::pcapng::Event last)
{
    if (last == capture::pcapng::Event::Damage)
        return reader.damage();
    if (last != capture::pcapng::Event::End)
        return std::nullopt;
    if (reader.file().endsWithinBlock())
        return capture::pcapng::Damage{reader.file().offset(), "it ends within a block"};
    if (reader.file().offset() == 0)
        return capture::pcapng::Damage{0, "it is empty"};
    return std::nullopt;
}

std::string sessionName(std::uint32_t session)
{
    char name[16];
    std::snprintf(name, sizeof name, "%08x", session);
    return name;
}

void printErrorAt(const InputFile &input, std::uint64_t offset, const std::string &what)
{
    printError(input.name() + ": byte " + std::to_string(offset) + ": " + what);
}

void printError(const std::string &line)
{
    std::string shown;
    decoding::appendEscaped(shown, line);
    std::fprintf(stderr, "padscope: %s\n", shown.c_str());
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
