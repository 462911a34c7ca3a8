#pragma once

#include <QSizeF>
#include <qwt_scale_div.h>

#include "chart.h"

class QwtTransform;

namespace plots {

struct Axis
{
    QwtScaleDiv ticks;
    bool isLogarithmic = false;

    /// For whoever takes it; null for a linear axis.
    QwtTransform *newTransform() const;
};

struct Axes
{
    Axis x, y;
};

/// What the axes of a chart show on a canvas of this size.
Axes axesOf(const Chart &chart, const QSizeF &canvas);

} // namespace plots
