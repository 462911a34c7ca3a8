#include "rowview.h"

void RowView::doItemsLayout()
{
    const UpdateBlocker blocker(pacer);
    QTreeView::doItemsLayout();
}

void RowView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const UpdateBlocker blocker(pacer);
    QTreeView::scrollTo(index, hint);
}

void RowView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                          const QVector<int> &roles)
{
    const UpdateBlocker blocker(pacer);
    QTreeView::dataChanged(topLeft, bottomRight, roles);
}
