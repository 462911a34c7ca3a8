#include "reference/plainrows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include "reference/inspect.h"

namespace plainrows {

void install(monitor *view)
{
    // Widgets remember in which order they met styles and fonts: as when the tab is built.
    view->setParent(nullptr);
    auto *controls = static_cast<QHBoxLayout *>(view->layout()->takeAt(0));
    delete view->layout();
    delete Inspect::rows(*view);
    delete Inspect::label(*view);
    // Was a part of the row view.
    Inspect::pacer(*view) = nullptr;
    auto *layout = new QVBoxLayout;
    layout->addLayout(controls);
    auto *rows = new QTreeView;
    Inspect::rows(*view) = rows;
    rows->setRootIsDecorated(false);
    rows->setUniformRowHeights(true);
    rows->setFont(Inspect::font(*view));
    rows->setModel(view->findChild<QStandardItemModel *>());
    layout->addWidget(rows);
    auto *label = new QLabel;
    Inspect::label(*view) = label;
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(label);
    view->setLayout(layout);
}

void add(monitor *view, const QString &first, const QString &second)
{
    QTreeView *rows = Inspect::rows(*view);
    QAbstractItemModel *model = rows->model();
    const int row = model->rowCount();
    Inspect::label(*view)->setText(first);
    model->insertRow(row);
    const QModelIndex index = model->index(row, 0);
    model->setData(index, second.isEmpty() ? first : first + "   " + second, Qt::EditRole);
    if (row % 5 == 0)
        rows->scrollTo(index, QAbstractItemView::EnsureVisible);
    if (row <= 14)
        rows->resizeColumnToContents(0);
    if (row > 150)
        model->removeRows(0, row);
}

} // namespace plainrows
