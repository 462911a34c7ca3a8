#include "playable.h"

#include <cstdio>
#include <set>
#include <sys/stat.h>

#include "capturefiles.h"

namespace padscope {

namespace {

using capture::pcapng::Event;

constexpr std::size_t maxListed = 20;

std::string listOf(const std::set<std::uint32_t> &sessions)
{
    std::string list;
    std::size_t listed = 0;
    for (const std::uint32_t session : sessions) {
        if (++listed > maxListed)
            return list + " and " + std::to_string(sessions.size() - maxListed) + " more";
        list += (list.empty() ? "" : ", ") + sessionText(session);
    }
    return list;
}

/// It is read again while it is played.
std::string reasonAgainst(const std::string &path)
{
    struct stat info
    {
    };
    if (path == "-" || (stat(path.c_str(), &info) == 0 && !S_ISREG(info.st_mode)))
        return "a replay needs a regular file";
    return {};
}

/// What hinders the session from being played; empty when nothing does.
std::string reasonAgainst(const std::set<std::uint32_t> &sessions,
                          const std::optional<std::uint32_t> &session)
{
    if (sessions.empty())
        return "no packet of a capture in it";
    if (session && sessions.count(*session) == 0)
        return "no session " + sessionText(*session) + " in it; there is " + listOf(sessions);
    if (!session && sessions.size() > 1)
        return "several sessions are in it, of which --session takes one: " + listOf(sessions);
    return {};
}

} // namespace

std::string sessionText(std::uint32_t session)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08x", session);
    return text;
}

bool isPlayable(const std::string &path, const std::optional<std::uint32_t> &session)
{
    std::string reason = reasonAgainst(path);
    if (!reason.empty()) {
        printError(path + ": " + reason);
        return false;
    }
    const InputFile input(path);
    if (!input.isOpen())
        return false;
    capture::RecordReader reader(input.descriptor());
    std::set<std::uint32_t> sessions;
    Event last = reader.next();
    for (; last == Event::Packet; last = reader.next())
        sessions.insert(reader.record().header.session);
    if (last == Event::Damage) {
        printErrorAt(input, reader.damage().offset, reader.damage().reason);
        return false;
    }
    if (reader.skipped().newVersions > 0) {
        printErrorAt(input, reader.skipped().newVersionOffset, "a packet of a later version of the format");
        return false;
    }
    reason = reasonAgainst(sessions, session);
    if (!reason.empty())
        printError(path + ": " + reason);
    return reason.empty();
}

} // namespace padscope
