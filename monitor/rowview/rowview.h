#pragma once

#include <QTreeView>

#include "framepacer.h"

/// A tree view whose own requests for repaints are coalesced to one per frame. GUI thread only.
class RowView : public QTreeView
{
    // Without Q_OBJECT: style sheets go on seeing a QTreeView.

public:
    using QTreeView::QTreeView;

    FramePacer *framePacer() { return &pacer; }

    void doItemsLayout() override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QVector<int> &roles = QVector<int>()) override;

private:
    FramePacer pacer{this};
};
