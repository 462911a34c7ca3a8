#include <benchmark/benchmark.h>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>
#include <vector>

#include "inspect.h"
#include "tool.h"

// From a report to a row. The event loop runs once in a hundred rows, as in a burst. The tool's frame ends
// with each hundred, so that it paints as often as its peers.

namespace {

constexpr int batch = 100;
constexpr int scrollStep = 5; ///< the peers follow as the tool does
constexpr QSize viewSize(800, 600);

/// Appends a line as the tool does: the file is opened and closed each time.
void appendToFile(const QString &text)
{
    const QString folder = QDir::homePath() + QStringLiteral("/peer logs");
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
    QFile file(folder + QDateTime::currentDateTime().toString(QStringLiteral("/ddd-MMM-d-yy.log")));
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        file.write((text + QLatin1Char('\n')).toLatin1());
}

/// The packets of a hundred new reports.
std::vector<_DataPacket> nextPackets(int &number)
{
    std::vector<_DataPacket> all;
    for (int i = 0; i < batch; ++i)
        all.push_back(packetOf(positionReport(number++)));
    return all;
}

/// Texts of rows, a hundred at a time.
class Texts
{
public:
    QStringList next()
    {
        at = (at + batch) % texts.size();
        return texts.mid(at, batch);
    }

private:
    const QStringList texts = rowTexts(positionReport, 20 * batch);
    int at = 0;
};

void rowsInTool(benchmark::State &state)
{
    Tool tool;
    Inspect::treeOf(tool.rows)->setFixedSize(viewSize);
    tool.show(tool.rows);
    tool.rows->LogToFile(state.range(0) != 0);
    int number = 0;
    qint64 rows = 0;
    QObject::connect(Inspect::modelOf(tool.rows), &QStandardItemModel::rowsInserted, [&rows] { ++rows; });
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<_DataPacket> reports = nextPackets(number);
        state.ResumeTiming();
        for (_DataPacket &report : reports)
            tool.rows->Display(&report);
        tool.endFrame();
    }
    state.SetItemsProcessed(rows);
    state.counters["rows"] =
        benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kAvgIterations);
}
BENCHMARK(rowsInTool)->Name("b/tool/log")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void rowsInList(benchmark::State &state)
{
    Texts texts;
    QListWidget list;
    list.setUniformItemSizes(true);
    list.setFixedSize(viewSize);
    list.show();
    settle();
    qint64 rows = 0;
    QObject::connect(list.model(), &QAbstractItemModel::rowsInserted, [&rows] { ++rows; });
    for (auto _ : state) {
        const QStringList lines = texts.next();
        for (const QString &text : lines) {
            list.addItem(text);
            if (list.count() > fullView)
                delete list.takeItem(0);
            if (rows % scrollStep == 0)
                list.scrollToBottom();
            if (state.range(0))
                appendToFile(text);
        }
        settle();
    }
    state.SetItemsProcessed(rows);
    state.counters["rows"] =
        benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kAvgIterations);
}
BENCHMARK(rowsInList)->Name("b/QListWidget/log")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void linesInText(benchmark::State &state)
{
    Texts texts;
    QPlainTextEdit edit;
    edit.setReadOnly(true);
    edit.setMaximumBlockCount(fullView);
    edit.setLineWrapMode(QPlainTextEdit::NoWrap);
    edit.setFixedSize(viewSize);
    edit.show();
    settle();
    qint64 rows = 0;
    for (auto _ : state) {
        const QStringList lines = texts.next();
        for (const QString &text : lines) {
            edit.appendPlainText(text);
            if (++rows % scrollStep == 0)
                edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->maximum());
            if (state.range(0))
                appendToFile(text);
        }
        settle();
    }
    state.SetItemsProcessed(rows);
    state.counters["rows"] =
        benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kAvgIterations);
}
BENCHMARK(linesInText)->Name("b/QPlainTextEdit/log")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
