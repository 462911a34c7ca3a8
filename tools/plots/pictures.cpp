#include "pictures.h"

#include "listing.h"

namespace plots {

namespace {

QString nameOf(const std::optional<std::int32_t> &board)
{
    return board ? QStringLiteral("Board %1").arg(*board) : QStringLiteral("No board");
}

/// A session of a single moment has some width, too, and one whose stamps are further apart than can be told.
Span spanOf(const decoding::SessionOverview &session, const Survey &survey)
{
    const Span span{survey.secondsOf(session.firstNs), survey.secondsOf(session.lastNs)};
    constexpr double minHalf = 0.05;
    return span.last > span.first ? span : Span{span.first - minHalf, span.first + minHalf};
}

} // namespace

Pictures::Pictures(const Survey &contents, int columns)
    : survey(contents)
{
    std::map<std::uint32_t, Span> spans;
    for (const decoding::SessionOverview &session : survey.overview().sessions()) {
        const Span span = spanOf(session, survey);
        spans[session.session] = span;
        if (session.lost > 0 && losses.size() < maxSessions)
            losses.try_emplace(session.session, span, columns);
    }
    for (const BoardKey &key : survey.boards())
        boards.try_emplace(key, titleOf(key.session, nameOf(key.board)), spans[key.session],
                           survey.positionsOf(key), columns);
}

/// With the session, where there are several.
QString Pictures::titleOf(std::uint32_t session, const QString &name) const
{
    if (survey.overview().sessions().size() < 2)
        return name;
    return name + QStringLiteral(", session %1").arg(session, 8, 16, QLatin1Char('0'));
}

void Pictures::follow(const capture::Record &record)
{
    const double seconds = survey.secondsOf(record);
    if (record.header.kindOf() == capture::Kind::Report) {
        const auto board = boards.find(keyOf(record));
        if (board != boards.end())
            board->second.follow(record, seconds);
    }
    const auto loss = record.header.lost > 0 ? losses.find(record.header.session) : losses.end();
    if (loss == losses.end())
        return;
    loss->second.total.add(seconds, loss->second.count);
    loss->second.count += record.header.lost;
    loss->second.total.add(seconds, loss->second.count);
}

void Pictures::finish()
{
    for (auto &[key, board] : boards)
        board.finish();
    for (auto &[session, loss] : losses)
        loss.total.add(loss.span.last, loss.count);
}

std::vector<Chart> Pictures::charts(const BoardKey &board, What what) const
{
    const auto found = boards.find(board);
    return found == boards.end() ? std::vector<Chart>() : found->second.charts(what);
}

std::vector<Chart> Pictures::lossCharts(std::uint32_t session) const
{
    const auto found = losses.find(session);
    if (found == losses.end())
        return {};
    Chart chart{titleOf(session, QStringLiteral("All boards")) + QStringLiteral(": packets lost so far"),
                QStringLiteral("Time (s)"), QStringLiteral("Lost (packets)"), found->second.span};
    chart.curves.push_back({QStringLiteral("lost"), found->second.total.lines(unbroken)});
    return {chart};
}

std::vector<Chart> Pictures::allCharts(What what) const
{
    std::vector<Chart> all;
    const auto append = [&all](std::vector<Chart> charts) {
        std::move(charts.begin(), charts.end(), std::back_inserter(all));
    };
    for (const BoardKey &board : survey.boards())
        append(charts(board, what));
    if (what == What::Rates) {
        for (const auto &[session, loss] : losses)
            append(lossCharts(session));
    }
    return all;
}

} // namespace plots
