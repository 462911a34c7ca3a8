#include "reference/plainrows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include "monitor.h"

namespace plainrows {

void install(monitor *view)
{
    // Widgets remember in which order they met styles and fonts: as when the tab is built.
    view->setParent(nullptr);
    auto *controls = static_cast<QHBoxLayout *>(view->layout()->takeAt(0));
    delete view->layout();
    delete view->treeView;
    delete view->lastRowLabel;
    auto *layout = new QVBoxLayout;
    layout->addLayout(controls);
    view->treeView = new QTreeView;
    view->treeView->setRootIsDecorated(false);
    view->treeView->setUniformRowHeights(true);
    view->treeView->setFont(view->monitorFont);
    view->treeView->setModel(view->model);
    layout->addWidget(view->treeView);
    view->lastRowLabel = new QLabel;
    view->lastRowLabel->setTextFormat(Qt::PlainText);
    view->lastRowLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(view->lastRowLabel);
    view->setLayout(layout);
}

void add(monitor *view, const QString &first, const QString &second)
{
    const int row = view->model->rowCount();
    view->lastRowLabel->setText(first);
    view->model->insertRow(row);
    const QModelIndex index = view->model->index(row, 0);
    view->model->setData(index, second.isEmpty() ? first : first + "   " + second, Qt::EditRole);
    if (row % 5 == 0)
        view->treeView->scrollTo(index, QAbstractItemView::EnsureVisible);
    if (row <= 14)
        view->treeView->resizeColumnToContents(0);
    if (row > 150)
        view->model->removeRows(0, row);
}

} // namespace plainrows
