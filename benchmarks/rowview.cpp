#include <benchmark/benchmark.h>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>

#include "inspect.h"
#include "paints.h"
#include "tool.h"

namespace {

constexpr int minVisibleRows = 60;

/// The monitor, full, with a row view of 800 by 600 pixels.
class FullMonitor
{
public:
    FullMonitor()
    {
        Inspect::treeOf(tool.rows)->setFixedSize(800, 600);
        tool.show(tool.rows);
        fill(fullView);
    }

    void fill(int count)
    {
        while (Inspect::modelOf(tool.rows)->rowCount() < count)
            addRow();
        settle();
    }

    void addRow()
    {
        _DataPacket packet = packetOf(positionReport(number++));
        tool.rest();
        tool.rows->Display(&packet);
    }

    QWidget *viewport() const { return Inspect::treeOf(tool.rows)->viewport(); }

    Tool tool;
    int number = 0;
};

/// A text widget with as many lines in the same font.
class FullText
{
public:
    FullText()
        : texts(rowTexts(positionReport, 4 * fullView))
    {
        Tool tool;
        tool.show(tool.rows);
        edit.setFont(Inspect::treeOf(tool.rows)->font());
        edit.setReadOnly(true);
        edit.setMaximumBlockCount(fullView);
        edit.setLineWrapMode(QPlainTextEdit::NoWrap);
        edit.setFixedSize(800, 600);
        edit.show();
        for (int i = 0; i < fullView; ++i)
            addLine();
        settle();
    }

    void addLine()
    {
        edit.appendPlainText(texts.at(number++ % texts.size()));
        edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->maximum());
    }

    QPlainTextEdit edit;

private:
    QStringList texts;
    int number = 0;
};

void countPaints(benchmark::State &state, const Paints &paints)
{
    state.counters["paints"] = benchmark::Counter(paints.count, benchmark::Counter::kAvgIterations);
    state.counters["pixels"] =
        benchmark::Counter(static_cast<double>(paints.pixels), benchmark::Counter::kAvgIterations);
}

void paintMonitor(benchmark::State &state)
{
    FullMonitor monitor;
    const Paints paints(monitor.viewport());
    for (auto _ : state)
        monitor.viewport()->repaint();
    countPaints(state, paints);
}
BENCHMARK(paintMonitor)->Name("a1/tool")->Unit(benchmark::kMicrosecond);

void paintText(benchmark::State &state)
{
    FullText text;
    const Paints paints(text.edit.viewport());
    for (auto _ : state)
        text.edit.viewport()->repaint();
    countPaints(state, paints);
}
BENCHMARK(paintText)->Name("a1/QPlainTextEdit")->Unit(benchmark::kMicrosecond);

/// Rows up to and including the one that empties the view. Refilling it is not timed.
void rowInMonitor(benchmark::State &state)
{
    FullMonitor monitor;
    const Paints paints(monitor.viewport());
    for (auto _ : state) {
        monitor.addRow();
        settle();
        if (Inspect::modelOf(monitor.tool.rows)->rowCount() == 1) {
            state.PauseTiming();
            monitor.fill(minVisibleRows);
            state.ResumeTiming();
        }
    }
    countPaints(state, paints);
}
BENCHMARK(rowInMonitor)->Name("a2/tool")->Unit(benchmark::kMicrosecond)->Iterations(1510);

void lineInText(benchmark::State &state)
{
    FullText text;
    const Paints paints(text.edit.viewport());
    for (auto _ : state) {
        text.addLine();
        settle();
    }
    countPaints(state, paints);
}
BENCHMARK(lineInText)->Name("a2/QPlainTextEdit")->Unit(benchmark::kMicrosecond)->Iterations(1510);

} // namespace
