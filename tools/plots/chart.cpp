#include "chart.h"

#include <algorithm>
#include <cmath>
#include <QPainter>
#include <QPalette>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>

#include "axes.h"

namespace plots {

namespace {

constexpr double left = 110;
constexpr double right = chartWidth - left - canvasWidth;
constexpr double titleHeight = 28;
constexpr double legendRowHeight = 18;
constexpr double belowCanvas = 50;
constexpr double timeCanvasHeight = 200;
constexpr double minPathHeight = 150;
constexpr double maxPathHeight = 500;
constexpr double iconWidth = 28;
constexpr double markerDistance = 100;
constexpr int markerSize = 7;
constexpr double lineWidth = 1.2;
constexpr double dotRadius = 1.5;

/// Okabe and Ito's colours, which the colour-blind tell apart, but grey for yellow, which is not seen on
/// white. Each has a marker of its own, by which they are told apart without colours. A line that is dashed
/// would hide spikes between its dashes.
struct CurveStyle
{
    QRgb color;
    QwtSymbol::Style marker;
};

constexpr CurveStyle curveStyles[] = {
    {0xFF0072B2, QwtSymbol::Ellipse}, {0xFFD55E00, QwtSymbol::Rect},   {0xFF009E73, QwtSymbol::Triangle},
    {0xFFCC79A7, QwtSymbol::Diamond}, {0xFF000000, QwtSymbol::XCross}, {0xFFE69F00, QwtSymbol::DTriangle},
    {0xFF56B4E9, QwtSymbol::Cross},   {0xFF666666, QwtSymbol::Star1},
};

const CurveStyle &styleOf(std::size_t curve)
{
    return curveStyles[curve % std::size(curveStyles)];
}

/// The same everywhere, whatever the locale.
class NumberScale : public QwtScaleDraw
{
public:
    QwtText label(double value) const override
    {
        constexpr double rounding = 1e-9;
        return QString::number(std::abs(value) < rounding ? 0 : value, 'g', 10);
    }
};

QFont titleFont()
{
    QFont font = textFont();
    font.setPixelSize(13);
    font.setBold(true);
    return font;
}

struct LegendEntry
{
    std::size_t curve;
    QPointF place; ///< upper left, from the legend's
};

/// In rows as wide as the canvas.
std::vector<LegendEntry> legendOf(const Chart &chart)
{
    constexpr double spacing = 20;
    const QFontMetricsF metrics(textFont());
    std::vector<LegendEntry> entries;
    QPointF place;
    for (std::size_t i = 0; i < chart.curves.size(); ++i) {
        if (chart.curves[i].lines.empty())
            continue;
        const double width = iconWidth + metrics.horizontalAdvance(chart.curves[i].name) + spacing;
        if (place.x() > 0 && place.x() + width > canvasWidth)
            place = {0, place.y() + legendRowHeight};
        entries.push_back({i, place});
        place.rx() += width;
    }
    return entries;
}

double canvasHeight(const Chart &chart)
{
    if (!chart.positions)
        return timeCanvasHeight;
    const double shape = chart.positions->height() / std::max(chart.positions->width(), 1.0);
    return std::clamp(canvasWidth * shape, minPathHeight, maxPathHeight);
}

QRectF canvasOf(const Chart &chart)
{
    const std::vector<LegendEntry> entries = legendOf(chart);
    const double legendHeight = entries.empty() ? 0 : entries.back().place.y() + legendRowHeight;
    return {left, titleHeight + legendHeight + 4, double{canvasWidth}, canvasHeight(chart)};
}

class Painting
{
public:
    Painting(QPainter &target, const Chart &painted)
        : painter(target)
        , chart(painted)
        , canvas(canvasOf(painted))
        , axes(axesOf(painted, canvas.size()))
    {
        const Axis &x = axes.x;
        const Axis &y = axes.y;
        xMap.setScaleInterval(x.ticks.lowerBound(), x.ticks.upperBound());
        xMap.setPaintInterval(canvas.left(), canvas.right());
        yMap.setTransformation(y.newTransform());
        yMap.setScaleInterval(y.ticks.lowerBound(), y.ticks.upperBound());
        yMap.setPaintInterval(canvas.bottom(), canvas.top());
    }

    void paint()
    {
        painter.setRenderHint(QPainter::Antialiasing);
        paintTitles();
        paintGrid();
        paintAxis(axes.x, QwtScaleDraw::BottomScale, canvas.bottomLeft(), canvas.width());
        paintAxis(axes.y, QwtScaleDraw::LeftScale, canvas.topLeft(), canvas.height());
        for (std::size_t i = 0; i < chart.curves.size(); ++i) {
            for (const Line &line : chart.curves[i].lines)
                paintLine(line, QColor(styleOf(i).color));
        }
        for (std::size_t i = 0; i < chart.curves.size(); ++i)
            paintMarkers(styleOf(i), markersOf(i));
        paintLegend();
    }

private:
    void paintTitles()
    {
        painter.setPen(Qt::black);
        painter.setFont(titleFont());
        const QString title =
            QFontMetricsF(titleFont()).elidedText(chart.title, Qt::ElideRight, canvasWidth + right);
        painter.drawText(QPointF(left, 20), title);
        painter.setFont(textFont());
        const QRectF below(canvas.left(), canvas.bottom() + 26, canvas.width(), 20);
        painter.drawText(below, Qt::AlignCenter, chart.xTitle);
        painter.save();
        painter.translate(14, canvas.center().y());
        painter.rotate(-90);
        painter.drawText(QRectF(-canvas.height(), -10, 2 * canvas.height(), 20), Qt::AlignCenter,
                         chart.yTitle);
        painter.restore();
    }

    void paintGrid()
    {
        QwtPlotGrid grid;
        grid.setXDiv(axes.x.ticks);
        grid.setYDiv(axes.y.ticks);
        grid.setMajorPen(QColor(0xD8, 0xD8, 0xD8), 1);
        grid.draw(&painter, xMap, yMap, canvas);
    }

    void paintAxis(const Axis &axis, QwtScaleDraw::Alignment alignment, const QPointF &place, double length)
    {
        NumberScale scale;
        scale.setAlignment(alignment);
        scale.setTransformation(axis.newTransform());
        scale.setScaleDiv(axis.ticks);
        scale.move(place);
        scale.setLength(length);
        painter.setFont(textFont());
        scale.draw(&painter, QPalette(Qt::black, Qt::white));
    }

    /// At samples, not everywhere the same for all curves.
    QPolygonF markersOf(std::size_t curve) const
    {
        QPolygonF markers;
        double next = canvas.left() + markerDistance * (0.5 + static_cast<double>(curve % 4) / 4);
        for (const Line &line : chart.curves[curve].lines) {
            for (const QPointF &sample : line) {
                const QPointF point = QwtScaleMap::transform(xMap, yMap, sample);
                if (chart.positions ? isNear(markers, point) : point.x() < next)
                    continue;
                markers.append(point);
                next = point.x() + markerDistance;
            }
        }
        if (markers.isEmpty() && !chart.curves[curve].lines.empty())
            markers.append(QwtScaleMap::transform(xMap, yMap, chart.curves[curve].lines.front().front()));
        return markers;
    }

    static bool isNear(const QPolygonF &markers, const QPointF &point)
    {
        const auto isNearTo = [&point](const QPointF &marker) {
            return (marker - point).manhattanLength() < markerDistance;
        };
        return std::any_of(markers.begin(), markers.end(), isNearTo);
    }

    void paintLine(const Line &line, const QColor &color)
    {
        if (line.size() == 1) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawEllipse(QwtScaleMap::transform(xMap, yMap, line.front()), dotRadius, dotRadius);
            painter.setBrush(Qt::NoBrush);
            return;
        }
        QwtPlotCurve curve;
        curve.setPaintAttribute(QwtPlotCurve::FilterPoints, false); // it is decimated
        curve.setPaintAttribute(QwtPlotCurve::ClipPolygons, false); // all of it is on the canvas
        curve.setPen(color, lineWidth);
        curve.setSamples(line);
        curve.draw(&painter, xMap, yMap, canvas);
    }

    void paintMarkers(const CurveStyle &style, const QPolygonF &points)
    {
        QwtSymbol symbol(style.marker, QColor(Qt::white), QPen(QColor(style.color), lineWidth),
                         QSize(markerSize, markerSize));
        symbol.setCachePolicy(QwtSymbol::NoCache);
        symbol.drawSymbols(&painter, points);
    }

    void paintLegend()
    {
        painter.setFont(textFont());
        for (const LegendEntry &entry : legendOf(chart)) {
            const QPointF place = entry.place + QPointF(left, titleHeight);
            const CurveStyle &style = styleOf(entry.curve);
            const QPointF middle = place + QPointF(iconWidth / 2 - 2, legendRowHeight / 2);
            const QPointF half(iconWidth / 2 - 2, 0);
            painter.setPen(QPen(QColor(style.color), lineWidth));
            painter.drawLine(middle - half, middle + half);
            paintMarkers(style, QVector<QPointF>{middle});
            painter.setPen(Qt::black);
            painter.drawText(QRectF(place + QPointF(iconWidth, 0), QSizeF(canvasWidth, legendRowHeight)),
                             Qt::AlignLeft | Qt::AlignVCenter, chart.curves[entry.curve].name);
        }
    }

    QPainter &painter;
    const Chart &chart;
    QRectF canvas;
    const Axes axes;
    QwtScaleMap xMap, yMap;
};

} // namespace

QFont textFont()
{
    // An SVG takes what the reader's machine has of them.
    QFont font(QStringLiteral("DejaVu Sans, Verdana, sans-serif"));
    font.setPixelSize(11);
    return font;
}

QSizeF sizeOf(const Chart &chart)
{
    return {double{chartWidth}, canvasOf(chart).bottom() + belowCanvas};
}

void paint(QPainter &painter, const Chart &chart)
{
    painter.save();
    Painting(painter, chart).paint();
    painter.restore();
}

} // namespace plots
