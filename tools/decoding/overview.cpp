#include "overview.h"

#include <algorithm>
#include <iterator>

#include "recordtext.h"

namespace decoding {

namespace {

/// Adds one without making a text of the name each time.
void count(SessionOverview::Counts &counts, std::string_view name)
{
    const auto found = counts.find(name);
    ++(found == counts.end() ? counts[std::string(name)] : found->second);
}

void countKind(SessionOverview &session, const capture::Header &header)
{
    if (const char *name = nameOf(header.kindOf()))
        count(session.kinds, name);
    else
        count(session.kinds, "kind " + std::to_string(header.kind));
}

std::optional<std::int32_t> boardIdOf(const capture::Record &record)
{
    return record.header.has(capture::BoardIsValid) ? std::optional(record.header.board) : std::nullopt;
}

void followReport(SessionOverview &session, const capture::Record &record)
{
    SessionOverview::Board &board = session.boards[boardIdOf(record)];
    if (board.reports++ == 0)
        board.firstNs = record.timeNs;
    board.lastNs = record.timeNs;
    count(board.types, reportTypeOf(record));
}

void followCounts(SessionOverview &session, const std::vector<capture::BoardCounts> &boards)
{
    for (const capture::BoardCounts &counts : boards)
        session.boards[counts.board].lost = counts.lost;
}

void followSequence(SessionOverview &session, const capture::Record &record)
{
    if (record.header.sequence != session.nextSequence)
        ++session.gaps;
    session.nextSequence = record.header.sequence + 1;
}

/// A thread that is in no call has returned from those that it made. Where packets are missing since, the
/// return may be among them.
void followThread(SessionOverview &session, const capture::Record &record)
{
    const auto found = session.openCalls.find(record.header.thread);
    if (record.header.has(capture::WithinCall) || found == session.openCalls.end())
        return;
    auto &calls = found->second;
    const auto isBeforeGap = [&](const SessionOverview::Call &call) { return call.gaps < session.gaps; };
    calls.erase(std::remove_if(calls.begin(), calls.end(), isBeforeGap), calls.end());
}

void followCall(SessionOverview &session, const capture::Record &record)
{
    session.openCalls[record.header.thread].push_back(
        {static_cast<std::uint32_t>(record.header.sequence), session.gaps, callTextOf(record)});
}

/// Calls within this one have returned as well.
void followReturn(SessionOverview &session, const capture::Record &record)
{
    const auto found = session.openCalls.find(record.header.thread);
    if (found == session.openCalls.end())
        return;
    auto &calls = found->second;
    const auto isReturned = [&](const SessionOverview::Call &call) {
        return call.number == record.header.link;
    };
    const auto call = std::find_if(calls.rbegin(), calls.rend(), isReturned);
    if (call != calls.rend())
        calls.erase(std::prev(call.base()), calls.end());
}

} // namespace

bool SessionOverview::hasNeverReturned(const Call &call) const
{
    return end && end->reason != capture::EndReason::Slice && call.gaps == gaps;
}

double SessionOverview::rateOf(const Board &board)
{
    if (board.lastNs <= board.firstNs)
        return 0;
    return static_cast<double>(board.reports - 1) / (static_cast<double>(board.lastNs - board.firstNs) / 1e9);
}

std::string SessionOverview::endText(bool isCutOff) const
{
    if (!end)
        return isCutOff ? "cut off" : "no clean end";
    switch (end->reason) {
    case capture::EndReason::Exit:
        return "clean, exit status " + std::to_string(end->value);
    case capture::EndReason::Signal:
        return "signal " + std::to_string(end->value);
    case capture::EndReason::Slice:
        return "a slice";
    default:
        return "unknown"; // of a process that was no child of the recorder
    }
}

SessionOverview &Overview::sessionOf(const capture::Record &record)
{
    const auto [index, isNew] = indices.try_emplace(record.header.session, all.size());
    if (!isNew)
        return all[index->second];
    SessionOverview &session = all.emplace_back();
    session.session = record.header.session;
    session.firstNs = record.timeNs;
    return session;
}

void Overview::follow(const capture::Record &record)
{
    SessionOverview &session = sessionOf(record);
    ++session.packets;
    session.firstNs = std::min(session.firstNs, record.timeNs);
    session.lastNs = std::max(session.lastNs, record.timeNs);
    session.lost += record.header.lost;
    if (record.payload.size < record.payloadLength || record.header.has(capture::PayloadCut))
        ++session.cut;
    if (record.header.has(capture::Edited))
        ++session.edited;
    followSequence(session, record);
    countKind(session, record.header);
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        followThread(session, record);
        followReport(session, record);
        break;
    case capture::Kind::Hotplug:
        followThread(session, record);
        break;
    case capture::Kind::Call:
        followThread(session, record);
        followCall(session, record);
        break;
    case capture::Kind::Return:
        followThread(session, record);
        followReturn(session, record);
        break;
    case capture::Kind::Board:
        if (const auto board = boardIdOf(record))
            session.boards[board];
        break;
    case capture::Kind::Mark:
        session.notes.emplace_back(record.payload.text());
        break;
    case capture::Kind::Status:
        if (const auto status = capture::statusOf(record.payload))
            followCounts(session, status->boards);
        break;
    case capture::Kind::End:
        session.end = capture::endOf(record.payload);
        if (session.end)
            followCounts(session, session.end->boards);
        break;
    default:
        break;
    }
}

} // namespace decoding
