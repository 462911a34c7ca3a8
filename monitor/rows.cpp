#include "monitor/monitor.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QStandardItemModel>
#include <QTreeView>

#include "monitor/boundedtext.h"
#include "monitor/framepacer.h"
#include "monitor/rowdelegate.h"
#include "monitor/rowformats.h"
#include "monitor/steadylayout.h"

namespace {

constexpr int lastRowKept = 150;
constexpr int lastRowThatWidens = 14;
constexpr int scrollStep = 5;

QString dayLogPath(const QDateTime &now)
{
    const QString folder = QDir::homePath() + QDir::separator() + QLatin1String("qorvexgraph logs");
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
    return folder + QDir::separator() + now.toString(QLatin1String("ddd-MMM-d-yy.log"));
}

void writeLine(QFile &file, const QString &text)
{
    file.write((text + QLatin1Char('\n')).toLatin1());
}

/// Opened anew for each row, so that a row after midnight goes to the next day's file.
void appendToDayLog(const QString &first, const QString &second)
{
    QFile file(dayLogPath(QDateTime::currentDateTime()));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        return;
    writeLine(file, first);
    if (!second.isEmpty())
        writeLine(file, second);
}

} // namespace

void monitor::AddData(const QString &first, const QString &second)
{
    const int row = model->rowCount();
    pacer->pace();
    showLastRow(first);
    model->insertRow(row);
    const QModelIndex index = model->index(row, 0);
    model->setData(index, second.isEmpty() ? first : first + QLatin1String("   ") + second, Qt::EditRole);
    // The view follows the newest rows in steps of five.
    if (row % scrollStep == 0)
        treeView->scrollTo(index, QAbstractItemView::EnsureVisible);
    if (row <= lastRowThatWidens)
        treeView->resizeColumnToContents(0);
    if (logEnabled)
        appendToDayLog(first, second);
    // Emptied in one step rather than trimmed row by row.
    if (row > lastRowKept)
        model->removeRows(0, row);
}

void monitor::showLastRow(const QString &text)
{
    // One line of plain text is as high as another, and the label's width asks for nothing.
    column->setSteady(!lastRowLabel->wordWrap() && RowDelegate::isPlain(shownPart(text)) &&
                      RowDelegate::isPlain(shownPart(lastRowLabel->text())));
    const UpdateBlocker blocker(*pacer);
    lastRowLabel->setText(text);
    column->setSteady(false);
}

void monitor::AddData(const unsigned char *bytes, unsigned int length)
{
    static constexpr char digits[] = "0123456789abcdef";
    QString text;
    QString hexadecimal;
    for (unsigned int i = 0; i < length; ++i) {
        text += QLatin1Char(rows::printable(bytes[i]));
        hexadecimal += QLatin1Char(digits[bytes[i] >> 4]);
        hexadecimal += QLatin1Char(digits[bytes[i] & 15]);
        hexadecimal += QLatin1Char(' ');
        // The first group has nine bytes, every later one eight.
        if (i != 0 && i % 8 == 0)
            hexadecimal += QLatin1Char(' ');
    }
    AddData(text, hexadecimal);
}

void monitor::OnTimerAddRest()
{
    pendingTextTimer.stop();
    // A slot of the host's may run the event loop, in which another text is taken in.
    const QString text = pendingText;
    AddData(text, QString());
    pendingText = QString();
}
