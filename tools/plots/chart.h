#pragma once

#include <optional>
#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <vector>

#include "columns.h"

class QPainter;

namespace plots {

inline constexpr int canvasWidth = 800; ///< of every chart, in its own units

struct Curve
{
    QString name;            ///< in the legend
    std::vector<Line> lines; ///< empty for one that is not drawn, and keeps its place among the colours
};

/// A picture of curves with its axes.
struct Chart
{
    QString title;
    QString xTitle;
    QString yTitle;
    Span span;                  ///< of the horizontal axis
    bool isLogarithmic = false; ///< the vertical axis
    /// Of a path: both axes have one scale then, and the vertical one points down.
    std::optional<QRectF> positions = std::nullopt;
    std::vector<Curve> curves = {};
};

inline constexpr int chartWidth = 930;

/// Of all texts but titles. It has to be the application's as well: an SVG names that, too.
QFont textFont();

/// In the chart's units, `chartWidth` wide.
QSizeF sizeOf(const Chart &chart);

/// Paints at the origin.
void paint(QPainter &painter, const Chart &chart);

} // namespace plots
