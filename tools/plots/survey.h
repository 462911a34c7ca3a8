#pragma once

#include <map>
#include <optional>
#include <QRectF>
#include <string>
#include <tuple>
#include <vector>

#include "failedcalls.h"
#include "overview.h"
#include "recordreader.h"

namespace plots {

/// A board in a session. No board stands for reports that tell none.
struct BoardKey
{
    std::uint32_t session = 0;
    std::optional<std::int32_t> board;

    bool operator<(const BoardKey &other) const
    {
        return std::tie(session, board) < std::tie(other.session, other.board);
    }
};

struct Mark
{
    std::uint32_t session = 0;
    double seconds = 0;
    std::string text;
};

/// What a capture has, which must be known before anything is drawn.
class Survey
{
public:
    void follow(const capture::Record &record);

    /// Since the first packet of the file.
    double secondsOf(std::uint64_t timeNs) const;
    double secondsOf(const capture::Record &record) const { return secondsOf(record.timeNs); }

    const decoding::Overview &overview() const { return sessions; }
    const FailedCalls &failedCalls() const { return failed; }
    /// The first `maxListed`; the overview counts them all.
    const std::vector<Mark> &marks() const { return allMarks; }
    /// That are drawn: the first ones that have reports, session by session.
    std::vector<BoardKey> boards() const;
    /// What holds all positions that a board reports.
    QRectF positionsOf(const BoardKey &board) const;

private:
    struct Bounds
    {
        QPointF lowest, highest;
    };

    void followPositions(const capture::Record &report);

    std::optional<std::uint64_t> firstNs;
    decoding::Overview sessions;
    FailedCalls failed;
    std::vector<Mark> allMarks;
    std::map<BoardKey, Bounds> positions;
};

BoardKey keyOf(const capture::Record &record);

} // namespace plots
