#include <QDir>
#include <QHeaderView>
#include <QScrollBar>

#include "reference/reference.h"
#include "reference/shownwindow.h"
#include "support/tests.h"

namespace {

QDir logFolder()
{
    return QDir(QDir::homePath() + QStringLiteral("/qorvexgraph logs"));
}

QByteArray logBytes()
{
    QByteArray bytes;
    for (const QFileInfo &info : logFolder().entryInfoList(QDir::Files)) {
        QFile file(info.filePath());
        if (file.open(QIODevice::ReadOnly))
            bytes += file.readAll();
    }
    return bytes;
}

/// Writes down what happens to the row view, with what the label and the log hold at that moment.
class Recorder : public QObject
{
public:
    explicit Recorder(const ShownWindow &observed)
        : shown(observed)
    {
        connect(shown.model, &QStandardItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { note("inserted", first, last); });
        connect(shown.model, &QStandardItemModel::dataChanged, this,
                [this](const QModelIndex &from, const QModelIndex &to, const QVector<int> &roles) {
                    note("changed", from.row(), to.row());
                    for (int role : roles)
                        text += " role " + QByteArray::number(role) + '\n';
                });
        connect(shown.model, &QStandardItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { note("removed", first, last); });
        const QScrollBar *bar = shown.rows()->verticalScrollBar();
        connect(bar, &QScrollBar::rangeChanged, this,
                [this](int first, int last) { note("range", first, last); });
        connect(bar, &QScrollBar::valueChanged, this, [this](int value) { note("scrolled", value, value); });
        connect(shown.rows()->header(), &QHeaderView::sectionResized, this,
                [this](int, int before, int after) { note("resized", before, after); });
    }

    QByteArray text;

private:
    void note(const char *what, int from, int to)
    {
        text += QByteArray(what) + ' ' + QByteArray::number(from) + ' ' + QByteArray::number(to) +
                " label \"" + shown.label()->text().left(20).toLatin1() + "\" log " +
                QByteArray::number(logBytes().size()) + '\n';
    }

    const ShownWindow &shown;
};

} // namespace

/// The log, and the order in which it, rows and label come about, are what they always have been.
class RowTextTests : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { logFolder().removeRecursively(); }
    void logFile();
    void orderOfCalls();
};

void RowTextTests::logFile()
{
    const ShownWindow shown({{"Log To File", true}});
    for (const reference::Report &report : reference::reports())
        ShownWindow::send(shown.view, report.bytes, report.time);
    reference::verifyNone(reference::difference("log.txt", logBytes()));
}

void RowTextTests::orderOfCalls()
{
    ShownWindow shown({{"Log To File", true}});
    shown.show(shown.view);
    Recorder recorder(shown);
    for (const reference::Report &report : reference::reports()) {
        ShownWindow::send(shown.view, report.bytes, report.time);
        recorder.text += "sent\n";
        // On a slow machine a line that waits for its end would be shown between two reports.
        Inspect::pendingTextTimer(*shown.view).stop();
        // A layout that is due comes with the timers, and can make another.
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }
    reference::verifyNone(reference::difference("calls.txt", recorder.text));
}

PADSCOPE_TESTS(RowTextTests);
#include "tst_rowtexts.moc"
