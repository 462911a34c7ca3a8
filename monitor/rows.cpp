#include <QLabel>
#include <QStandardItemModel>
#include <QTreeView>

#include "boundedtext.h"
#include "daylog.h"
#include "decoding.h"
#include "framepacer.h"
#include "monitor.h"
#include "rowannouncer.h"
#include "rowdelegate.h"
#include "steadylayout.h"

namespace {

constexpr int lastRowKept = 150;
constexpr int lastRowThatWidens = 14;
constexpr int scrollStep = 5;

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
    // Emptied in one step rather than trimmed row by row, by design.
    if (row > lastRowKept)
        model->removeRows(0, row);
}

void monitor::showLastRow(const QString &text)
{
    // Lines of plain text have the same height, and the label's width is ignored: no new layout is needed.
    column->setSteady(!lastRowLabel->wordWrap() && RowDelegate::isPlain(shownPart(text)) &&
                      RowDelegate::isPlain(shownPart(lastRowLabel->text())));
    const UpdateBlocker blocker(*pacer);
    lastRowLabel->setText(text);
    announcer->textChanged();
    column->setSteady(false);
}

void monitor::AddData(const unsigned char *bytes, unsigned int length)
{
    addRow(reports::rawRow({bytes, length}));
}

void monitor::OnTimerAddRest()
{
    pendingTextTimer.stop();
    // A slot of the host may run the event loop, in which more text may arrive.
    const QString text = pendingText;
    AddData(text, QString());
    pendingText = QString();
}
