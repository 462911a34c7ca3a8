#include <algorithm>
#include <cstdio>
#include <set>

#include "payloads.h"
#include "replay.h"
#include "replaytimes.h"
#include "severallisteners.h"

namespace {

constexpr std::uint16_t attachCall = 1; // numbers of the format
constexpr std::uint16_t setCallbackCall = 4;
constexpr std::uint16_t sendCommandCall = 6;
constexpr std::uint16_t setPnpCallbackCall = 11;
constexpr std::uint32_t maxExtendedLength = 1024 * 1024; // of a report that was cut
constexpr std::int64_t maxTimeNs = INT64_MAX / 4;        // 73 years, so that sums of times fit

std::string sessionText(std::uint32_t session)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08x", session);
    return text;
}

std::string listOf(const std::set<std::uint32_t> &sessions)
{
    constexpr std::size_t maxListed = 20;
    std::string list;
    std::size_t listed = 0;
    for (const std::uint32_t session : sessions) {
        if (++listed > maxListed)
            return list + " and " + std::to_string(sessions.size() - maxListed) + " more";
        list += (list.empty() ? "" : ", ") + sessionText(session);
    }
    return list;
}

/// Fills in a replay packet by packet.
class ReplayReader
{
public:
    explicit ReplayReader(Replay &replay_)
        : replay(replay_)
        , reader(replay.file.descriptor())
    {
    }

    /// \return why it is no capture that can be played; empty when it is
    std::string read();

private:
    void follow(const capture::Record &record);
    void followReport(const capture::Record &record);
    void followHotplug(const capture::Record &record);
    void followCall(const capture::Record &record);
    void followReturn(const capture::Header &header);
    void enter(ReplayEntry::Kind kind, const capture::Record &record, capture::ByteView bytes);
    std::string troubleOf(capture::pcapng::Event last) const;
    std::string sessionTrouble() const;
    std::string beginTrouble() const;

    Replay &replay;
    capture::RecordReader reader;
    std::set<std::uint32_t> sessions;
    std::uint64_t packets = 0;
    std::uint64_t startNs = 0;
    std::int64_t lastNs = 0;       ///< since the start
    std::int64_t lastHeardNs = -1; ///< of the last report or notification
    ReplayBegin begin;
    SeveralListeners reports;
    SeveralListeners notifications;
};

std::string ReplayReader::read()
{
    capture::pcapng::Event last = reader.next();
    for (; last == capture::pcapng::Event::Packet && !replay.boards.hasTooMany(); last = reader.next()) {
        sessions.insert(reader.record().header.session);
        if (reader.record().header.session == replay.plan.session.value_or(*sessions.begin()))
            follow(reader.record());
    }
    replay.boards.finish();
    std::string trouble = troubleOf(last);
    if (!trouble.empty())
        return trouble;
    ReplayTimes times(replay, begin);
    times.cut();
    times.set();
    return beginTrouble();
}

std::string ReplayReader::troubleOf(capture::pcapng::Event last) const
{
    if (replay.boards.hasTooMany())
        return "there are too many boards at once; allowed are " + std::to_string(BoardHistory::maxBoards);
    if (last == capture::pcapng::Event::Damage)
        return "offset " + std::to_string(reader.damage().offset) + ": " + reader.damage().reason;
    if (reader.skipped().newVersions > 0)
        return "offset " + std::to_string(reader.skipped().newVersionOffset) +
               ": this was written by a later version";
    if (sessions.empty())
        return "there is no packet of a capture in it";
    return sessionTrouble();
}

std::string ReplayReader::sessionTrouble() const
{
    if (replay.plan.session ? packets > 0 : sessions.size() == 1)
        return {};
    const std::string list = listOf(sessions);
    if (replay.plan.session)
        return "there is no session " + sessionText(*replay.plan.session) + "; allowed are " + list;
    return "there are several sessions, of which one must be chosen: " + list;
}

std::string ReplayReader::beginTrouble() const
{
    const std::int64_t from = replay.plan.from.count();
    if (from == 0 || lastHeardNs >= from)
        return {};
    const auto seconds = [](std::int64_t ns) { return static_cast<double>(ns) * 1e-9; };
    char text[160];
    std::snprintf(text, sizeof text,
                  "there is no report from %.9g s on; the session ends %.9g s after its first packet",
                  seconds(from), seconds(lastNs));
    return text;
}

void ReplayReader::follow(const capture::Record &record)
{
    if (packets++ == 0)
        startNs = record.timeNs;
    const std::uint64_t since = std::max(record.timeNs, startNs) - startNs;
    lastNs = std::max(lastNs, static_cast<std::int64_t>(std::min<std::uint64_t>(since, maxTimeNs)));
    replay.boards.follow(record, replay.entries.size());
    replay.answers.follow(record, replay.entries.size(), lastNs);
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        followReport(record);
        break;
    case capture::Kind::Hotplug:
        followHotplug(record);
        break;
    case capture::Kind::Call:
        followCall(record);
        break;
    case capture::Kind::Return:
        followReturn(record.header);
        break;
    default:
        break;
    }
}

/// Of a report that several listeners got, the one of the lowest number is played.
void ReplayReader::followReport(const capture::Record &record)
{
    replay.listened.insert(record.header.board);
    const SeveralListeners::Found found = reports.follow(record, replay.entries.size());
    if (found.isSame && !found.isLower)
        return;
    if (found.isSame)
        replay.entries[found.entry].kind = ReplayEntry::Nothing;
    enter(ReplayEntry::Report, record, record.payload);
}

void ReplayReader::followHotplug(const capture::Record &record)
{
    if (notifications.follow(record, replay.entries.size()).isSame)
        return;
    enter(ReplayEntry::Notification, record, {});
    replay.boards.notified(replay.entries.size());
}

void ReplayReader::followCall(const capture::Record &record)
{
    capture::PayloadReader arguments(record.payload);
    if (record.header.call == setPnpCallbackCall) {
        notifications.registered(arguments.number<std::uint32_t>());
    } else if (record.header.call == setCallbackCall) {
        const auto board = arguments.number<std::int32_t>();
        const auto listener = arguments.number<std::uint32_t>();
        if (listener != 0) // null
            replay.listened.insert(board);
        reports.registered(listener);
    } else if (record.header.call == sendCommandCall && replay.plan.lockstep) {
        arguments.number<std::int32_t>();
        const auto command = arguments.text();
        if (command && arguments.isWhole())
            enter(ReplayEntry::Command, record, *command);
    }
}

void ReplayReader::followReturn(const capture::Header &header)
{
    if (lastHeardNs >= 0)
        return;
    if (header.call == setCallbackCall)
        begin.registrationNs = lastNs;
    else if (header.call == attachCall)
        begin.attachNs = lastNs;
}

void ReplayReader::enter(ReplayEntry::Kind kind, const capture::Record &record, capture::ByteView bytes)
{
    const capture::ByteView block = reader.file().block();
    ReplayEntry entry{};
    entry.timeNs = lastNs;
    entry.offset = bytes.size > 0 ? record.offset + static_cast<std::uint64_t>(bytes.data - block.data) : 0;
    entry.board = record.header.board;
    entry.recorded = static_cast<std::uint32_t>(bytes.size);
    entry.length = entry.recorded;
    entry.kind = kind;
    if (kind == ReplayEntry::Report) {
        entry.isNull = record.header.has(capture::PointerWasNull);
        const bool isWhole = entry.isNull || record.payloadLength <= maxExtendedLength;
        entry.length = isWhole ? record.payloadLength : std::max(entry.recorded, maxExtendedLength);
    }
    replay.entries.push_back(entry);
    if (kind != ReplayEntry::Command)
        lastHeardNs = lastNs;
}

} // namespace

std::shared_ptr<const Replay> readReplay(const ReplayPlan &plan, std::string &error)
{
    const auto replay = std::make_shared<Replay>(plan, error);
    if (error.empty())
        error = ReplayReader(*replay).read();
    return error.empty() ? replay : nullptr;
}
