#pragma once

#include <map>
#include <optional>
#include <QRectF>
#include <string>

#include "chart.h"
#include "columns.h"
#include "panels.h"
#include "path.h"
#include "rates.h"
#include "recordreader.h"

namespace plots {

/// \return nothing for a report of another kind, and where the position is cut off
std::optional<QPointF> positionIn(const capture::Record &report, const PathFields &path);

/// What is drawn of one board in one session.
class BoardCurves
{
public:
    /// \param positions all that the board reports
    /// \param columns in the width of a chart
    BoardCurves(QString boardTitle, Span shown, const QRectF &positions, int columns);

    void follow(const capture::Record &report, double seconds);
    /// To be called behind the last report.
    void finish();

    /// Those that have data.
    std::vector<Chart> charts(What what) const;

private:
    void followFields(const capture::Record &report, double seconds);
    void followPaths(const capture::Record &report, double seconds);
    Chart newChart(const QString &title, const QString &yTitle) const;
    std::vector<Chart> pathCharts() const;
    std::vector<Chart> panelCharts(What what) const;
    std::vector<Chart> rateCharts() const;

    QString title;
    Span span;
    QRectF range;
    int columnCount;
    std::vector<Columns> fields; ///< `maxFieldsOfPanel` for each of the panels
    std::vector<Path> ways;      ///< as `paths`
    std::map<std::string, Rates, std::less<>> types;
};

} // namespace plots
