#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QStringList>

/// Writes down the primitives that a painter draws, with the pen and the brush that they are drawn with.
class RecordingEngine : public QPaintEngine
{
public:
    RecordingEngine()
        : QPaintEngine(AllFeatures)
    {
    }

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState &) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { record("pixmap"); }
    void drawPath(const QPainterPath &) override { record("path"); }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { record("polygon"); }

    void drawRects(const QRect *rects, int count) override
    {
        for (const QRect *rect = rects; rect != rects + count; ++rect)
            record("rect " + text(rect->topLeft()) + ' ' + size(rect->size()) + pen() + brush());
    }
    void drawLines(const QLine *lines, int count) override
    {
        for (const QLine *line = lines; line != lines + count; ++line)
            record("line " + text(line->p1()) + ' ' + text(line->p2()) + pen());
    }
    void drawEllipse(const QRect &rect) override
    {
        record("ellipse " + text(rect.topLeft()) + ' ' + size(rect.size()) + pen() + brush());
    }
    void drawTextItem(const QPointF &point, const QTextItem &item) override
    {
        record("text " + text(point.toPoint()) + " \"" + item.text() + '"' + pen());
    }

    QStringList primitives;

private:
    void record(const QString &primitive) { primitives += primitive; }

    static QString text(const QPoint &point) { return QStringLiteral("%1,%2").arg(point.x()).arg(point.y()); }
    static QString size(const QSize &size)
    {
        return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    }

    QString pen() const
    {
        const QPen pen = painter()->pen();
        QString result = " pen " + pen.color().name() + '/' + QString::number(pen.widthF());
        if (pen.style() != Qt::SolidLine || pen.capStyle() != Qt::SquareCap ||
            pen.joinStyle() != Qt::BevelJoin)
            result += " of another style";
        return result;
    }

    QString brush() const
    {
        const QBrush brush = painter()->brush();
        if (brush.style() == Qt::SolidPattern)
            return " brush " + brush.color().name();
        QString result = QStringLiteral(" no brush");
        if (brush.style() == Qt::LinearGradientPattern) {
            const auto *gradient = static_cast<const QLinearGradient *>(brush.gradient());
            result =
                QStringLiteral(" across %1..%2").arg(gradient->start().x()).arg(gradient->finalStop().x());
        } else if (brush.style() == Qt::RadialGradientPattern) {
            const auto *gradient = static_cast<const QRadialGradient *>(brush.gradient());
            result =
                " around " + text(gradient->center().toPoint()) + '/' + QString::number(gradient->radius());
        }
        if (brush.gradient()) {
            for (const QGradientStop &stop : brush.gradient()->stops())
                result += QStringLiteral(" %1:%2").arg(stop.first).arg(stop.second.name());
        }
        return result;
    }
};

/// A device of 480x500 pixels to paint on.
class RecordingCanvas : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return &engine; }

    QStringList primitives() const { return engine.primitives; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return 480;
        case PdmHeight:
            return 500;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return 0;
        }
    }

private:
    mutable RecordingEngine engine;
};
