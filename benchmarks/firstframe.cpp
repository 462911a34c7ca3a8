#include <benchmark/benchmark.h>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include "paints.h"
#include "tool.h"

// From the call that builds the widget to its first painted frame.

namespace {

void untilFirstFrame(benchmark::State &state, QWidget *(*create)())
{
    qint64 frames = 0;
    for (auto _ : state) {
        QWidget *widget = create();
        const Paints paints(widget);
        widget->show();
        while (paints.count == 0)
            QCoreApplication::processEvents();
        ++frames;
        state.PauseTiming();
        delete widget;
        settle();
        state.ResumeTiming();
    }
    state.counters["frames"] =
        benchmark::Counter(static_cast<double>(frames), benchmark::Counter::kAvgIterations);
}

QWidget *newTool()
{
    return new qorvexgraph;
}

QLayout *rowOf(std::initializer_list<QWidget *> widgets)
{
    auto *row = new QHBoxLayout;
    for (QWidget *widget : widgets)
        row->addWidget(widget);
    return row;
}

QWidget *newBarTab()
{
    auto *tab = new QWidget;
    auto *layout = new QVBoxLayout(tab);
    layout->addLayout(
        rowOf({new QCheckBox(QStringLiteral("Classic Mode")), new QLabel(QStringLiteral("Fast Computer")),
               new QSlider(Qt::Horizontal), new QLabel(QStringLiteral("Slow Computer")),
               new QLabel(QStringLiteral("Prox:")), new QCheckBox(QStringLiteral("Lock Frequency")),
               new QLabel(QStringLiteral("Freq:")), new QSpinBox}));
    auto *frame = new QFrame;
    frame->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    layout->addWidget(frame, 1);
    return tab;
}

QWidget *newMonitorTab()
{
    auto *tab = new QWidget;
    auto *layout = new QVBoxLayout(tab);
    auto *fonts = new QFontComboBox;
    fonts->setFontFilters(QFontComboBox::MonospacedFonts);
    fonts->setEditable(false);
    auto *sizes = new QComboBox;
    sizes->addItems({QStringLiteral("6"), QStringLiteral("8"), QStringLiteral("10"), QStringLiteral("12")});
    layout->addLayout(
        rowOf({new QCheckBox(QStringLiteral("Log to file")), new QLabel(QStringLiteral("Fast Computer")),
               new QSlider(Qt::Horizontal), new QLabel(QStringLiteral("Slow Computer")),
               new QLabel(QStringLiteral("Font")), fonts, sizes}));
    tab->setStyleSheet(QStringLiteral(
        "QTreeView {color: white; background-color: black; font-size: 10px; font-family: \"Courier\";}"));
    layout->addWidget(new QTreeView);
    layout->addWidget(new QLabel);
    return tab;
}

QWidget *newPlainWindow()
{
    auto *window = new QWidget;
    auto *layout = new QVBoxLayout(window);
    layout->addWidget(new QLabel(QStringLiteral("Devices found")));
    auto *tabs = new QTabWidget;
    tabs->addTab(newBarTab(), QStringLiteral("Bar Graph"));
    tabs->addTab(newMonitorTab(), QStringLiteral("Monitor"));
    layout->addWidget(tabs);
    layout->addWidget(new QLineEdit);
    return window;
}

BENCHMARK_CAPTURE(untilFirstFrame, tool, newTool)->Name("i/tool")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(untilFirstFrame, plain, newPlainWindow)->Name("i/QWidget")->Unit(benchmark::kMicrosecond);

} // namespace
