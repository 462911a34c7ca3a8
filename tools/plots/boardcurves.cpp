#include "boardcurves.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "decoding.h"
#include "recordtext.h"

namespace plots {

namespace {

constexpr int cellsPerColumn = 2;

reports::Bytes bytesOf(const capture::Record &report)
{
    return {report.payload.data, report.payload.size};
}

/// What is cut off is not there.
bool isIn(const reports::Bytes &bytes, const reports::Field &field)
{
    return field.offset + reports::widthInBytes(field) <= bytes.length;
}

double valueOf(const Panel &panel, const reports::Field &field, const reports::Bytes &bytes)
{
    const std::int64_t value = reports::read(field, bytes);
    if (field.scale)
        return field.scale->of(value);
    return static_cast<double>(panel.convert ? panel.convert(value) : value);
}

/// "SignalReport, sub-type 1"
QString reportOf(const reports::Layout &layout)
{
    const QString name = QString::fromUtf8(layout.report);
    const bool hasSubTypes = layout.type == reports::SignalReport;
    return hasSubTypes ? QStringLiteral("%1, sub-type %2").arg(name).arg(layout.subType) : name;
}

std::vector<Chart> withData(std::vector<Chart> charts)
{
    const auto isEmpty = [](const Chart &chart) {
        return std::all_of(chart.curves.begin(), chart.curves.end(),
                           [](const Curve &curve) { return curve.lines.empty(); });
    };
    charts.erase(std::remove_if(charts.begin(), charts.end(), isEmpty), charts.end());
    return charts;
}

/// Whether curves hide each other: all together go up and down by more than a quarter of the chart's height
/// within a column of pixels.
bool isCrowded(const Chart &chart)
{
    const auto height = [&chart](const QPointF &sample) {
        return chart.isLogarithmic ? std::log10(sample.y()) : sample.y();
    };
    int drawn = 0;
    double way = 0;
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const Curve &curve : chart.curves) {
        drawn += curve.lines.empty() ? 0 : 1;
        for (const Line &line : curve.lines) {
            for (int i = 0; i < line.size(); ++i) {
                lowest = std::min(lowest, height(line[i]));
                highest = std::max(highest, height(line[i]));
                way += i > 0 ? std::abs(height(line[i]) - height(line[i - 1])) : 0;
            }
        }
    }
    return drawn > 1 && way > 0.25 * canvasWidth * (highest - lowest);
}

/// Curves that hide each other get a chart each, in which they keep their colours.
void appendReadable(std::vector<Chart> &charts, Chart chart)
{
    if (!isCrowded(chart)) {
        charts.push_back(std::move(chart));
        return;
    }
    for (std::size_t i = 0; i < chart.curves.size(); ++i) {
        Chart single = chart;
        for (std::size_t j = 0; j < chart.curves.size(); ++j) {
            if (j != i)
                single.curves[j].lines.clear();
        }
        single.title += QStringLiteral(", ") + chart.curves[i].name;
        charts.push_back(std::move(single));
    }
}

} // namespace

std::optional<QPointF> positionIn(const capture::Record &report, const PathFields &path)
{
    const reports::Bytes bytes = bytesOf(report);
    if (reports::layoutOf(bytes) != path.layout || !isIn(bytes, *path.x) || !isIn(bytes, *path.y))
        return std::nullopt;
    return QPointF(static_cast<double>(reports::read(*path.x, bytes)),
                   static_cast<double>(reports::read(*path.y, bytes)));
}

BoardCurves::BoardCurves(QString boardTitle, Span shown, const QRectF &positions, int columns)
    : title(std::move(boardTitle))
    , span(shown)
    , range(positions)
    , columnCount(columns)
    , fields(std::size(panels) * maxFieldsOfPanel, Columns(shown, columns))
    , ways(std::size(paths), Path(positions, columns * cellsPerColumn))
{
}

void BoardCurves::follow(const capture::Record &report, double seconds)
{
    followFields(report, seconds);
    followPaths(report, seconds);
    const std::string_view type = decoding::reportTypeOf(report);
    auto found = types.find(type);
    if (found == types.end())
        found = types.emplace(type, Rates(span, columnCount)).first;
    found->second.add(seconds);
}

void BoardCurves::followFields(const capture::Record &report, double seconds)
{
    const reports::Bytes bytes = bytesOf(report);
    const reports::Layout *layout = reports::layoutOf(bytes);
    for (std::size_t i = 0; layout && i < std::size(panels); ++i) {
        const Panel &panel = panels[i];
        if (panel.layout != layout)
            continue;
        for (std::size_t j = 0; j < maxFieldsOfPanel && panel.fields[j].name; ++j) {
            const reports::Field &field = *panel.fields[j].field;
            if (isIn(bytes, field))
                fields[i * maxFieldsOfPanel + j].add(seconds, valueOf(panel, field, bytes));
        }
    }
}

void BoardCurves::followPaths(const capture::Record &report, double seconds)
{
    for (std::size_t i = 0; i < std::size(paths); ++i) {
        if (const auto position = positionIn(report, paths[i]))
            ways[i].add(seconds, *position);
    }
}

void BoardCurves::finish()
{
    for (auto &[type, rates] : types)
        rates.finish();
}

std::vector<Chart> BoardCurves::charts(What what) const
{
    switch (what) {
    case What::Path:
        return pathCharts();
    case What::Rates:
        return rateCharts();
    default:
        return panelCharts(what);
    }
}

Chart BoardCurves::newChart(const QString &name, const QString &yTitle) const
{
    return {title + QStringLiteral(": ") + name, QStringLiteral("Time (s)"), yTitle, span};
}

std::vector<Chart> BoardCurves::pathCharts() const
{
    Chart chart = newChart(QStringLiteral("the pen's path"), QStringLiteral("Y (board units)"));
    chart.xTitle = QStringLiteral("X (board units)");
    chart.positions = range;
    for (std::size_t i = 0; i < std::size(paths); ++i)
        chart.curves.push_back({QString::fromUtf8(paths[i].name), ways[i].lines()});
    return withData({chart});
}

std::vector<Chart> BoardCurves::panelCharts(What what) const
{
    std::vector<Chart> found;
    for (std::size_t i = 0; i < std::size(panels); ++i) {
        const Panel &panel = panels[i];
        if (panel.what != what)
            continue;
        Chart chart =
            newChart(QStringLiteral("%1 (%2)").arg(QString::fromUtf8(panel.title), reportOf(*panel.layout)),
                     QString::fromUtf8(panel.axis));
        for (std::size_t j = 0; j < maxFieldsOfPanel && panel.fields[j].name; ++j) {
            const Columns &columns = fields[i * maxFieldsOfPanel + j];
            chart.curves.push_back({QString::fromUtf8(panel.fields[j].name), columns.lines()});
        }
        appendReadable(found, std::move(chart));
    }
    return withData(std::move(found));
}

std::vector<Chart> BoardCurves::rateCharts() const
{
    Chart rates = newChart(QStringLiteral("reports a second"), QStringLiteral("Reports a second (1/s)"));
    Chart gaps = newChart(QStringLiteral("jitter, the time from one report of a type to the next"),
                          QStringLiteral("Time between (ms)"));
    gaps.isLogarithmic = true;
    for (const auto &[type, rate] : types) {
        const QString name = QString::fromStdString(type);
        rates.curves.push_back({name, rate.rateLines()});
        gaps.curves.push_back({name, rate.gapLines()});
    }
    std::vector<Chart> found;
    appendReadable(found, std::move(rates));
    appendReadable(found, std::move(gaps));
    return withData(std::move(found));
}

} // namespace plots
