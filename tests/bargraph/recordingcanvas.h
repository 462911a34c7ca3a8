#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QStringList>

#include "bargraph/geometrytext.h"

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
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { primitives += "pixmap"; }
    void drawPath(const QPainterPath &) override { primitives += "path"; }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { primitives += "polygon"; }

    void drawRects(const QRect *rects, int count) override
    {
        for (const QRect *rect = rects; rect != rects + count; ++rect)
            primitives += "rect " + textOf(*rect) + pen() + brush();
    }
    void drawLines(const QLine *lines, int count) override
    {
        for (const QLine *line = lines; line != lines + count; ++line)
            primitives += "line " + textOf(line->p1()) + ' ' + textOf(line->p2()) + pen();
    }
    void drawEllipse(const QRect &rect) override
    {
        primitives += "ellipse " + textOf(rect) + pen() + brush();
    }
    void drawTextItem(const QPointF &point, const QTextItem &item) override
    {
        const QFont font = painter()->font();
        primitives +=
            "text " + textOf(point.toPoint()) + " \"" + item.text() + '"' + pen() + " in " + font.toString();
    }

    QStringList primitives;

private:
    QString pen() const
    {
        const QPen pen = painter()->pen();
        if (pen.style() == Qt::NoPen)
            return " no pen";
        const bool isPlain = pen.style() == Qt::SolidLine && pen.capStyle() == Qt::SquareCap &&
                             pen.joinStyle() == Qt::BevelJoin;
        return QStringLiteral(" pen %1/%2").arg(pen.color().name()).arg(pen.widthF()) +
               (isPlain ? "" : " of another style");
    }

    QString brush() const
    {
        const QBrush brush = painter()->brush();
        const QGradient *gradient = brush.gradient();
        if (!gradient)
            return brush.style() == Qt::SolidPattern ? " brush " + brush.color().name() : " no brush";
        QString text;
        if (gradient->type() == QGradient::LinearGradient) {
            const auto *linear = static_cast<const QLinearGradient *>(gradient);
            text = QStringLiteral(" across %1..%2").arg(linear->start().x()).arg(linear->finalStop().x());
        } else {
            const auto *radial = static_cast<const QRadialGradient *>(gradient);
            text = " around " + textOf(radial->center().toPoint()) + '/' + QString::number(radial->radius());
        }
        for (const QGradientStop &stop : gradient->stops())
            text += QStringLiteral(" %1:%2").arg(stop.first).arg(stop.second.name());
        return text;
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
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    mutable RecordingEngine engine;
};
