#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "chart.h"

namespace plots {

enum class Format
{
    Svg,
    Png,
    Pdf,
};

/// Columns of pixels in the width of a chart.
int columnsOf(Format format);

/// A picture of its own.
QByteArray svgOf(const Chart &chart);

/// Of charts one below the other; a PDF has pages of A4.
/// \return empty for more charts than a PNG can be high
QByteArray pictureOf(const std::vector<Chart> &charts, Format format, const QString &title);

} // namespace plots
