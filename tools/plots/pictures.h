#pragma once

#include <map>
#include <memory>
#include <vector>

#include "boardcurves.h"
#include "chart.h"
#include "survey.h"

namespace plots {

/// What is drawn of a capture that has been surveyed, board by board and session by session.
class Pictures
{
public:
    /// \param contents outlives this
    /// \param columns in the width of a chart
    Pictures(const Survey &contents, int columns);

    /// To be called for each packet, from the first on.
    void follow(const capture::Record &record);
    /// To be called behind the last packet.
    void finish();

    /// Those that have data.
    std::vector<Chart> charts(const BoardKey &board, What what) const;
    /// What was lost in a session; nothing where nothing was.
    std::vector<Chart> lossCharts(std::uint32_t session) const;
    /// Of all boards, and what was lost with the rates.
    std::vector<Chart> allCharts(What what) const;

private:
    struct Losses
    {
        Losses(Span shown, int columns)
            : span(shown)
            , total(shown, columns)
        {
            total.add(shown.first, 0);
        }

        Span span;
        double count = 0;
        Columns total;
    };

    QString titleOf(std::uint32_t session, const QString &name) const;

    const Survey &survey;
    std::map<BoardKey, BoardCurves> boards;
    std::map<std::uint32_t, Losses> losses; ///< by session, of those that have some
};

} // namespace plots
