#include "survey.h"

#include <algorithm>

#include "boardcurves.h"
#include "listing.h"

namespace plots {

void Survey::follow(const capture::Record &record)
{
    if (!firstNs)
        firstNs = record.timeNs;
    sessions.follow(record);
    failed.follow(record, secondsOf(record));
    if (record.header.kindOf() == capture::Kind::Mark && allMarks.size() < maxListed)
        allMarks.push_back({record.header.session, secondsOf(record), std::string(record.payload.text())});
    if (record.header.kindOf() == capture::Kind::Report)
        followPositions(record);
}

void Survey::followPositions(const capture::Record &report)
{
    for (const PathFields &path : paths) {
        const auto position = positionIn(report, path);
        if (!position)
            continue;
        Bounds &bounds = positions.try_emplace(keyOf(report), Bounds{*position, *position}).first->second;
        bounds.lowest = {std::min(bounds.lowest.x(), position->x()),
                         std::min(bounds.lowest.y(), position->y())};
        bounds.highest = {std::max(bounds.highest.x(), position->x()),
                          std::max(bounds.highest.y(), position->y())};
    }
}

double Survey::secondsOf(std::uint64_t timeNs) const
{
    return static_cast<double>(static_cast<std::int64_t>(timeNs - firstNs.value_or(0))) / 1e9;
}

std::vector<BoardKey> Survey::boards() const
{
    std::vector<BoardKey> found;
    for (const decoding::SessionOverview &session : sessions.sessions()) {
        for (const auto &[id, board] : session.boards) {
            if (board.reports > 0 && found.size() < maxBoards)
                found.push_back({session.session, id});
        }
    }
    return found;
}

QRectF Survey::positionsOf(const BoardKey &board) const
{
    const auto found = positions.find(board);
    return found == positions.end() ? QRectF() : QRectF(found->second.lowest, found->second.highest);
}

BoardKey keyOf(const capture::Record &record)
{
    const bool isKnown = record.header.has(capture::BoardIsValid);
    return {record.header.session, isKnown ? std::optional(record.header.board) : std::nullopt};
}

} // namespace plots
