#include "collector.h"

#include "recordtext.h"

namespace statistics {

void Collector::Session::followReport(const capture::Record &report)
{
    const auto board =
        report.header.has(capture::BoardIsValid) ? std::optional(report.header.board) : std::nullopt;
    auto &types = boards[board];
    const std::string_view name = decoding::reportTypeOf(report);
    auto type = types.find(name);
    if (type == types.end())
        type = types.try_emplace(std::string(name)).first;
    type->second.follow(report);
}

SessionStatistics Collector::Session::take()
{
    SessionStatistics session;
    session.session = number;
    for (auto &[id, types] : boards) {
        BoardStatistics board;
        board.board = id;
        for (auto &[name, type] : types)
            board.types.push_back(type.take(name));
        session.boards.push_back(std::move(board));
    }
    session.calls = calls.take();
    return session;
}

Collector::Session &Collector::sessionOf(std::uint32_t number)
{
    const auto [index, isNew] = indices.try_emplace(number, sessions.size());
    if (isNew)
        sessions.emplace_back().number = number;
    return sessions[index->second];
}

void Collector::follow(const capture::Record &record, bool isWanted)
{
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        if (isWanted)
            sessionOf(record.header.session).followReport(record);
        break;
    case capture::Kind::Call:
        sessionOf(record.header.session).calls.followCall(record, isWanted);
        break;
    case capture::Kind::Return:
        sessionOf(record.header.session).calls.followReturn(record);
        break;
    default:
        break;
    }
}

std::vector<SessionStatistics> Collector::take()
{
    std::vector<SessionStatistics> list;
    for (Session &session : sessions)
        list.push_back(session.take());
    return list;
}

} // namespace statistics
