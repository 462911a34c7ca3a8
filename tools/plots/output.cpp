#include "output.h"

#include <cmath>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace plots {

namespace {

constexpr int pixelsPerUnit = 2; ///< of a PNG, so that it is sharp in print
constexpr int maxPngHeight = 32'767;

double heightOf(const std::vector<Chart> &charts)
{
    double height = 0;
    for (const Chart &chart : charts)
        height += sizeOf(chart).height();
    return height;
}

void paintColumn(QPainter &painter, const std::vector<Chart> &charts)
{
    for (const Chart &chart : charts) {
        paint(painter, chart);
        painter.translate(0, sizeOf(chart).height());
    }
}

QByteArray svgOf(const std::vector<Chart> &charts, const QString &title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setTitle(title.toHtmlEscaped()); // which it does not do itself
    generator.setDescription(QStringLiteral("Drawn by padscope"));
    const QSize size(chartWidth, static_cast<int>(std::ceil(heightOf(charts))));
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    QPainter painter(&generator);
    paintColumn(painter, charts);
    painter.end();
    return bytes;
}

QByteArray pngOf(const std::vector<Chart> &charts)
{
    const int height = static_cast<int>(std::ceil(heightOf(charts) * pixelsPerUnit));
    if (height > maxPngHeight)
        return {};
    QImage image(chartWidth * pixelsPerUnit, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(pixelsPerUnit, pixelsPerUnit);
    paintColumn(painter, charts);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray pdfOf(const std::vector<Chart> &charts, const QString &title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("padscope"));
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    QPainter painter(&writer);
    const double scale = static_cast<double>(writer.width()) / chartWidth;
    const double pageHeight = writer.height() / scale;
    painter.scale(scale, scale);
    double used = 0;
    for (const Chart &chart : charts) {
        const double height = sizeOf(chart).height();
        if (used > 0 && used + height > pageHeight) {
            writer.newPage();
            painter.translate(0, -used);
            used = 0;
        }
        paint(painter, chart);
        painter.translate(0, height);
        used += height;
    }
    painter.end();
    return bytes;
}

} // namespace

int columnsOf(Format format)
{
    return format == Format::Png ? canvasWidth * pixelsPerUnit : canvasWidth;
}

QByteArray svgOf(const Chart &chart)
{
    return svgOf({chart}, chart.title);
}

QByteArray pictureOf(const std::vector<Chart> &charts, Format format, const QString &title)
{
    switch (format) {
    case Format::Png:
        return pngOf(charts);
    case Format::Pdf:
        return pdfOf(charts, title);
    default:
        return svgOf(charts, title);
    }
}

} // namespace plots
