#include "reference/reference.h"
#include "reference/reports.h"
#include "reference/shownwindow.h"
#include "support/tests.h"

#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>

namespace {

constexpr int rounds = 8;

/// Everything that a report can give, in a fixed order: text lines in between, some too soon after one
/// another.
template <typename Function>
void forEachReport(Function function)
{
    QTime time(12, 0);
    for (int round = 0; round < rounds; ++round) {
        for (const QByteArray &report : reportsOfEveryKind(round)) {
            time = time.addMSecs(17);
            function(report, time);
        }
        time = time.addMSecs(100);
        function(QByteArray("\x09") + "2line " + QByteArray::number(round) + " \x01\xe9\r\n", time);
        time = time.addMSecs(5 * round);
        function(QByteArray("\x09") + "wmore " + QByteArray::number(round) + "\nrest", time);
    }
}

QByteArray logBytes()
{
    const QDir folder(QDir::homePath() + QStringLiteral("/qorvexgraph logs"));
    QByteArray bytes;
    for (const QFileInfo &info : folder.entryInfoList(QDir::Files)) {
        QFile file(info.filePath());
        if (file.open(QIODevice::ReadOnly))
            bytes += file.readAll();
    }
    return bytes;
}

/// A layout that is due comes with the timers, and can make another.
void settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

/// Writes down what happens to the row view, with what the label and the log hold at that moment.
class Recorder : public QObject
{
public:
    explicit Recorder(monitor *observed)
        : view(observed)
    {
        const QStandardItemModel *model = view->model;
        connect(model, &QStandardItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { note("inserted", first, last); });
        connect(model, &QStandardItemModel::dataChanged, this,
                [this](const QModelIndex &from, const QModelIndex &to, const QVector<int> &roles) {
                    note("changed", from.row(), to.row());
                    for (int role : roles)
                        text += " role " + QByteArray::number(role) + '\n';
                });
        connect(model, &QStandardItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { note("removed", first, last); });
        connect(view->treeView->verticalScrollBar(), &QScrollBar::rangeChanged, this,
                [this](int first, int last) { note("range", first, last); });
        connect(view->treeView->verticalScrollBar(), &QScrollBar::valueChanged, this,
                [this](int value) { note("scrolled", value, value); });
        connect(view->treeView->header(), &QHeaderView::sectionResized, this,
                [this](int, int before, int after) { note("resized", before, after); });
    }

    QByteArray text;

private:
    void note(const char *what, int from, int to)
    {
        text += QByteArray(what) + ' ' + QByteArray::number(from) + ' ' + QByteArray::number(to) +
                " label \"" + view->lastRowLabel->text().left(20).toLatin1() + "\" log " +
                QByteArray::number(logBytes().size()) + '\n';
    }

    monitor *view;
};

} // namespace

/// Rows, log and the order in which they come about are what they always have been.
class RowTextTests : public QObject
{
    Q_OBJECT

private slots:
    void rowsAndLabel();
    void logFile();
    void orderOfCalls();
    void signalsOfTheBarGraph();
};

void RowTextTests::rowsAndLabel()
{
    ShownWindow shown;
    QByteArray text;
    connect(shown.view->model, &QStandardItemModel::dataChanged, this, [&](const QModelIndex &index) {
        text += index.data(Qt::EditRole).toString().toLatin1() + "|\n" +
                shown.view->lastRowLabel->text().toLatin1() + "|\n";
    });
    forEachReport([&](const QByteArray &report, QTime time) { shown.send(shown.view, report, time); });
    const QString difference = reference::difference(QStringLiteral("rows.txt"), text);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void RowTextTests::logFile()
{
    ShownWindow shown({{QStringLiteral("Log To File"), true}});
    forEachReport([&](const QByteArray &report, QTime time) { shown.send(shown.view, report, time); });
    const QString difference = reference::difference(QStringLiteral("log.txt"), logBytes());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(QDir(QDir::homePath() + QStringLiteral("/qorvexgraph logs")).removeRecursively());
}

void RowTextTests::orderOfCalls()
{
    ShownWindow shown({{QStringLiteral("Log To File"), true}});
    shown.window->commandLine->setEnabled(false);
    shown.show(shown.view, {480, 360});
    Recorder recorder(shown.view);
    forEachReport([&](const QByteArray &report, QTime time) {
        shown.send(shown.view, report, time);
        recorder.text += "sent\n";
        // On a slow machine a line that waits for its end would be shown between two reports.
        shown.view->pendingTextTimer.stop();
        settle();
    });
    const QString difference = reference::difference(QStringLiteral("calls.txt"), recorder.text);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void RowTextTests::signalsOfTheBarGraph()
{
    ShownWindow shown;
    QByteArray text;
    forEachReport([&](const QByteArray &report, QTime time) {
        shown.send(shown.bars, report, time);
        for (qint16 value : shown.bars->channelSignals)
            text += QByteArray::number(value) + ' ';
        text += QByteArray::number(shown.bars->frequency) + ' ' + QByteArray::number(shown.bars->voltageRaw) +
                '\n';
    });
    const QString difference = reference::difference(QStringLiteral("signals.txt"), text);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

PADSCOPE_TESTS(RowTextTests);
#include "tst_rowtexts.moc"
