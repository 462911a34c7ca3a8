#include <benchmark/benchmark.h>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QFrame>
#include <QGraphicsScene>
#include <QLineSeries>
#include <QPainter>
#include <QPolarChart>
#include <qwt_dial.h>
#include <qwt_dial_needle.h>
#include <qwt_plot.h>
#include <qwt_plot_barchart.h>
#include <qwt_plot_canvas.h>
#include <qwt_round_scale_draw.h>

#include "inspect.h"
#include "layouts.h"
#include "tool.h"

// Twelve bars and four dials, painted into an image of 800 by 500 pixels, with new values each time.

namespace {

constexpr QSize pictureSize(800, 500);
constexpr int barCount = 12;
constexpr int dialCount = 4;
constexpr int rounds = 16;

int signalAt(int round, int bar)
{
    const int size = 2200 + (round * 131 + bar * 397) % 1200;
    return (round + bar) % 2 == 0 ? size : -size;
}

/// Displays a report with the signals of a round.
void takeSignals(Tool &tool, int round)
{
    QByteArray report(40, 0);
    auto *bytes = reinterpret_cast<unsigned char *>(report.data());
    write(reports::reportLength, 40, bytes);
    write(reports::reportType, reports::SignalReport, bytes);
    write(reports::reportSubType, 1, bytes);
    for (int bar = 0; bar < barCount; ++bar) {
        report[13 + 2 * bar] = static_cast<char>(signalAt(round, bar));
        report[14 + 2 * bar] = static_cast<char>(signalAt(round, bar) >> 8);
    }
    _DataPacket packet = packetOf(report);
    tool.bars->Display(&packet);
}

void pictureOfTool(benchmark::State &state)
{
    Tool tool;
    Inspect::setPicture(tool.bars, state.range(0) != 0, pictureSize);
    tool.show(tool.bars);
    QImage image(tool.bars->size(), QImage::Format_ARGB32_Premultiplied);
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        takeSignals(tool, round++ % rounds);
        state.ResumeTiming();
        tool.bars->render(&image, {}, {}, QWidget::RenderFlags());
    }
    state.counters["bars"] = barCount;
}
BENCHMARK(pictureOfTool)->Name("c/tool")->ArgName("classic")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

void frameOfTool(benchmark::State &state)
{
    Tool tool;
    Inspect::setPicture(tool.bars, state.range(0) != 0, pictureSize);
    tool.show(tool.bars);
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        takeSignals(tool, round++ % rounds);
        state.ResumeTiming();
        settle();
    }
}
BENCHMARK(frameOfTool)
    ->Name("c/wholeframe")
    ->ArgName("classic")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMicrosecond);

/// The picture's rectangles and circles with their gradients: the cost that no implementation can avoid.
void gradientsAlone(benchmark::State &state)
{
    QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
    int round = 0;
    for (auto _ : state) {
        QPainter painter(&image);
        painter.setPen(QPen(Qt::black, 0));
        for (int bar = 0; bar < barCount; ++bar) {
            const QRect place(20 + 95 * (bar / 3) + 25 * (bar % 3), 205, 24,
                              -signalAt(round, bar) * 411 / 7000);
            QLinearGradient across(place.topLeft(), place.topRight());
            across.setColorAt(0, QColor(1, 1, 90));
            across.setColorAt(1, QColor(0, 0, 250));
            painter.setBrush(across);
            painter.drawRect(place);
        }
        for (int dial = 0; dial < dialCount; ++dial) {
            QRadialGradient glow(QPointF(60 + 90 * dial, 455), 40);
            glow.setColorAt(0.0, Qt::green);
            glow.setColorAt(0.2, Qt::black);
            painter.setBrush(glow);
            painter.drawEllipse(20 + 90 * dial, 415, 80, 80);
        }
        painter.end();
        round = (round + 1) % rounds;
    }
    state.counters["bars"] = barCount;
}
BENCHMARK(gradientsAlone)->Name("c/gradients")->Unit(benchmark::kMicrosecond);

/// The bars in one chart without axes, and each dial in a chart of its own.
class ChartsPicture
{
public:
    ChartsPicture()
    {
        auto *series = new QtCharts::QBarSeries;
        bars = new QtCharts::QBarSet(QString());
        for (int bar = 0; bar < barCount; ++bar)
            bars->append(0);
        series->append(bars);
        auto *chart = new QtCharts::QChart;
        chart->addSeries(series);
        add(chart, {0, 0, pictureSize.width() * 1.0, pictureSize.height() - 90.0});
        for (int dial = 0; dial < dialCount; ++dial) {
            auto *polar = new QtCharts::QPolarChart;
            needles[dial] = new QtCharts::QLineSeries;
            needles[dial]->append(0, 0);
            needles[dial]->append(0, 1);
            polar->addSeries(needles[dial]);
            add(polar, {20.0 + 90 * dial, pictureSize.height() - 90.0, 80, 80});
        }
        scene.setSceneRect(QRectF({0, 0}, pictureSize));
    }

    void take(int round)
    {
        for (int bar = 0; bar < barCount; ++bar)
            bars->replace(bar, signalAt(round, bar));
        for (int dial = 0; dial < dialCount; ++dial)
            needles[dial]->replace(1, (round * 37 + dial * 90) % 360, 1);
        settle();
    }

    void paint(QImage &image)
    {
        QPainter painter(&image);
        scene.render(&painter);
    }

private:
    void add(QtCharts::QChart *chart, const QRectF &place)
    {
        chart->legend()->hide();
        chart->setMargins({0, 0, 0, 0});
        chart->setGeometry(place);
        scene.addItem(chart);
    }

    QGraphicsScene scene;
    QtCharts::QBarSet *bars = nullptr;
    QtCharts::QLineSeries *needles[dialCount] = {};
};

class QwtPicture
{
public:
    QwtPicture()
    {
        window.resize(pictureSize);
        auto *plot = new QwtPlot(&window);
        plot->setGeometry(0, 0, pictureSize.width(), pictureSize.height() - 90);
        // Painted each time, like the others, not copied from a backing store.
        static_cast<QwtPlotCanvas *>(plot->canvas())->setPaintAttribute(QwtPlotCanvas::BackingStore, false);
        for (int axis = 0; axis < QwtPlot::axisCnt; ++axis)
            plot->enableAxis(axis, false);
        bars = new QwtPlotBarChart;
        bars->attach(plot);
        for (int dial = 0; dial < dialCount; ++dial) {
            dials[dial] = new QwtDial(&window);
            dials[dial]->setGeometry(20 + 90 * dial, pictureSize.height() - 90, 80, 80);
            dials[dial]->setScale(0, 360);
            for (auto part :
                 {QwtAbstractScaleDraw::Backbone, QwtAbstractScaleDraw::Ticks, QwtAbstractScaleDraw::Labels})
                scales(dials[dial])->enableComponent(part, false);
            dials[dial]->setNeedle(new QwtDialSimpleNeedle(QwtDialSimpleNeedle::Ray, true, Qt::green));
        }
        window.show();
        settle();
    }

    void take(int round)
    {
        QVector<double> values;
        for (int bar = 0; bar < barCount; ++bar)
            values.append(signalAt(round, bar));
        bars->setSamples(values);
        bars->plot()->replot();
        for (int dial = 0; dial < dialCount; ++dial)
            dials[dial]->setValue((round * 37 + dial * 90) % 360);
        settle();
    }

    void paint(QImage &image) { window.render(&image); }

private:
    static QwtAbstractScaleDraw *scales(QwtDial *dial) { return dial->scaleDraw(); }

    QWidget window;
    QwtPlotBarChart *bars = nullptr;
    QwtDial *dials[dialCount] = {};
};

template <typename Picture>
void pictureOf(benchmark::State &state)
{
    Picture picture;
    QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        picture.take(round++ % rounds);
        state.ResumeTiming();
        picture.paint(image);
    }
    state.counters["bars"] = barCount;
}
BENCHMARK_TEMPLATE(pictureOf, ChartsPicture)->Name("c/QtCharts")->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(pictureOf, QwtPicture)->Name("c/Qwt")->Unit(benchmark::kMicrosecond);

} // namespace
