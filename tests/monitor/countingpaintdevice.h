#pragma once

#include <QPaintDevice>
#include <QPaintEngine>

/// Counts the characters that are painted on it, and paints nothing.
class CountingPaintDevice : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return &engine; }
    int characters() const { return engine.characters; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 2000;
        case PdmWidthMM:
        case PdmHeightMM:
            return 500;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    class Engine : public QPaintEngine
    {
    public:
        Engine()
            : QPaintEngine(AllFeatures)
        {
        }
        bool begin(QPaintDevice *) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState &) override {}
        void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
        void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
        void drawTextItem(const QPointF &, const QTextItem &item) override
        {
            characters += item.text().size();
        }
        Type type() const override { return User; }

        int characters = 0;
    };

    mutable Engine engine;
};
