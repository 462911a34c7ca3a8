#include "columns.h"

#include <algorithm>
#include <cmath>

namespace plots {

Columns::Columns(Span shown, int count)
    : span(shown)
    , width((shown.last - shown.first) / count)
    , size(static_cast<std::size_t>(count))
{
}

std::size_t Columns::columnAt(double seconds) const
{
    const double column = width > 0 ? std::floor((seconds - span.first) / width) : 0;
    return static_cast<std::size_t>(std::clamp(column, 0.0, static_cast<double>(size - 1)));
}

void Columns::add(double seconds, double value)
{
    columns.resize(size);
    Column &column = columns[columnAt(seconds)];
    const QPointF sample(seconds, value);
    if (!column.isUsed)
        column = {true, sample, sample, sample, sample};
    if (value < column.lowest.y())
        column.lowest = sample;
    if (value > column.highest.y())
        column.highest = sample;
    column.last = sample;
}

void Columns::append(Line &line, const Column &column)
{
    QPointF samples[] = {column.first, column.lowest, column.highest, column.last};
    std::stable_sort(std::begin(samples), std::end(samples),
                     [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); });
    for (const QPointF &sample : samples) {
        if (line.isEmpty() || line.last() != sample)
            line.append(sample);
    }
}

std::vector<Line> Columns::lines(double maxGap) const
{
    std::vector<Line> found;
    for (const Column &column : columns) {
        if (!column.isUsed)
            continue;
        if (found.empty() || column.first.x() - found.back().last().x() > std::max(maxGap, width))
            found.emplace_back();
        append(found.back(), column);
    }
    return found;
}

} // namespace plots
