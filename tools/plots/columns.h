#pragma once

#include <limits>
#include <QPointF>
#include <QVector>
#include <vector>

namespace plots {

/// Where nothing came for longer, a line is broken.
inline constexpr double maxGapSeconds = 1;
/// Of lines that are never broken.
inline constexpr double unbroken = std::numeric_limits<double>::infinity();

struct Span
{
    double first = 0; ///< in seconds
    double last = 0;
};

/// A line of points. One that has a single point is a dot.
using Line = QVector<QPointF>;

/// Samples of a span of time in columns of equal width, each of which keeps its first, its lowest, its
/// highest and its last. Lines through these cover what lines through all samples cover, to the pixel if a
/// column is as wide as a pixel: no spike is lost, and nothing is made up.
class Columns
{
public:
    Columns(Span shown, int count);

    /// A sample beyond the span goes to the first or the last column.
    void add(double seconds, double value);

    /// By time.
    /// \param maxGap in seconds; at least a column's width is taken
    std::vector<Line> lines(double maxGap = maxGapSeconds) const;

private:
    struct Column
    {
        bool isUsed = false;
        QPointF first, lowest, highest, last;
    };

    std::size_t columnAt(double seconds) const;
    static void append(Line &line, const Column &column);

    Span span;
    double width;
    std::size_t size;
    std::vector<Column> columns; ///< empty before the first sample
};

} // namespace plots
