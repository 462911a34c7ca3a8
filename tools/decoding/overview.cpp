#include "overview.h"

#include <algorithm>

#include "recordtext.h"

namespace decoding {

namespace {

std::string kindNameOf(const capture::Record &record)
{
    const char *name = nameOf(record.header.kindOf());
    return name ? name : "kind " + std::to_string(record.header.kind);
}

void followReport(SessionOverview &session, const capture::Record &record)
{
    SessionOverview::Board &board = session.boards[record.header.board];
    if (board.reports++ == 0)
        board.firstNs = record.timeNs;
    board.lastNs = record.timeNs;
    ++board.types[std::string(reportTypeOf(record))];
}

void followCounts(SessionOverview &session, const std::vector<capture::BoardCounts> &boards)
{
    for (const capture::BoardCounts &counts : boards)
        session.boards[counts.board].lost = counts.lost;
}

} // namespace

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
        return "exit status " + std::to_string(end->value);
    case capture::EndReason::Signal:
        return "signal " + std::to_string(end->value);
    default:
        return "unknown";
    }
}

SessionOverview &Overview::sessionOf(const capture::Record &record)
{
    const auto found = std::find_if(all.begin(), all.end(), [&](const SessionOverview &session) {
        return session.session == record.header.session;
    });
    if (found != all.end())
        return *found;
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
    ++session.kinds[kindNameOf(record)];
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        followReport(session, record);
        break;
    case capture::Kind::Call:
        session.openCalls[static_cast<std::uint32_t>(record.header.sequence)] = textOf(record);
        break;
    case capture::Kind::Return:
        session.openCalls.erase(record.header.link);
        break;
    case capture::Kind::Board:
        session.boards[record.header.board];
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
