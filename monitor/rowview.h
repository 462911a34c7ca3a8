#pragma once

#include <QTreeView>

#include "monitor/framepacer.h"

class RowDelegate;

/// The rows of the monitor. Shows what a QTreeView shows, with less work for plain rows.
///
/// For one column without children, check boxes and icons. GUI thread only.
class RowView : public QTreeView
{
    // Without Q_OBJECT: style sheets go on seeing a QTreeView.

public:
    explicit RowView(QWidget *parent = nullptr);

    /// What a new row changes.
    Widgets paced() const;
    /// \param framePacer paints these widgets; lives as long as the view
    void setPacer(const FramePacer *framePacer) { pacer = framePacer; }

    void doItemsLayout() override;

protected slots:
    void updateGeometries() override;

protected:
    bool event(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;

private:
    void takeStyle();
    void layOutAppendedRows();
    QBrush background() const;

    RowDelegate *delegate;
    const FramePacer *pacer = nullptr;
    static constexpr int noRow = -1;
    static constexpr int everyRow = -2;
    int firstChanged = everyRow; ///< since the last layout; those after it have changed, too
    bool isAppending = false;
};
