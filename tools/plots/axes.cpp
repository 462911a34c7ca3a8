#include "axes.h"

#include <algorithm>
#include <limits>
#include <qwt_scale_engine.h>
#include <qwt_transform.h>
#include <type_traits>

namespace plots {

namespace {

/// Ends where the values end.
Axis exactAxis(double first, double last, int steps)
{
    return {QwtLinearScaleEngine().divideScale(first, last, steps, 5)};
}

/// Ends at round values.
template <typename Engine>
Axis roundAxis(double lowest, double highest)
{
    constexpr int steps = 6;
    const Engine engine;
    double step = 0;
    engine.autoScale(steps, lowest, highest, step);
    return {engine.divideScale(lowest, highest, steps, 5, step), std::is_same_v<Engine, QwtLogScaleEngine>};
}

Axis valueAxis(const Chart &chart)
{
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const Curve &curve : chart.curves) {
        for (const Line &line : curve.lines) {
            for (const QPointF &sample : line) {
                lowest = std::min(lowest, sample.y());
                highest = std::max(highest, sample.y());
            }
        }
    }
    if (chart.isLogarithmic)
        return roundAxis<QwtLogScaleEngine>(lowest, highest);
    // No line lies on the frame, but zero is the lowest of what is never negative.
    const double margin = 0.04 * (highest - lowest);
    const double below = lowest >= 0 ? std::min(margin, lowest) : margin;
    return roundAxis<QwtLinearScaleEngine>(lowest - below, highest + margin);
}

/// What a canvas of this shape shows of a path, with a margin.
QRectF shownPositions(const QRectF &positions, const QSizeF &canvas)
{
    constexpr double margin = 1.06;
    const double scale =
        margin * std::max({positions.width() / canvas.width(), positions.height() / canvas.height(), 1e-2});
    QRectF shown(QPointF(), canvas * scale);
    shown.moveCenter(positions.center());
    return shown;
}

} // namespace

QwtTransform *Axis::newTransform() const
{
    return isLogarithmic ? new QwtLogTransform : nullptr;
}

Axes axesOf(const Chart &chart, const QSizeF &canvas)
{
    constexpr int stepsAcross = 10;
    if (!chart.positions)
        return {exactAxis(chart.span.first, chart.span.last, stepsAcross), valueAxis(chart)};
    const QRectF shown = shownPositions(*chart.positions, canvas);
    return {exactAxis(shown.left(), shown.right(), stepsAcross), exactAxis(shown.bottom(), shown.top(), 6)};
}

} // namespace plots
