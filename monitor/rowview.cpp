#include "monitor/rowview.h"

#include <cstring>

#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QStyle>

#include "monitor/rowdelegate.h"

namespace {

/// Whether the widgets' style draws items as QCommonStyle does.
bool isCommonStyle(const QStyle *style)
{
    const char *name = style->metaObject()->className();
    return std::strcmp(name, "QFusionStyle") == 0 || std::strcmp(name, "QWindowsStyle") == 0;
}

/// Whether a style sheet over the view has rules for parts of widgets, such as items.
bool hasItemRules(const QWidget *view)
{
    for (; view; view = view->parentWidget()) {
        if (view->styleSheet().contains(QLatin1String("::")))
            return true;
    }
    return false;
}

bool isPlainStyle(const QWidget *view)
{
    return isCommonStyle(QApplication::style()) && !view->testAttribute(Qt::WA_SetStyle) &&
           view->layoutDirection() == Qt::LeftToRight && !hasItemRules(view);
}

QColor textColour(const QStyleOptionViewItem &option)
{
    QPalette::ColorGroup group = QPalette::Disabled;
    if (option.state & QStyle::State_Enabled)
        group = option.state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
    return option.palette.color(group, QPalette::Text);
}

} // namespace

RowView::RowView(QWidget *parent)
    : QTreeView(parent)
    , delegate(new RowDelegate(this))
{
    setItemDelegate(delegate);
}

bool RowView::event(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        firstChanged = everyRow;
    return QTreeView::event(event);
}

void RowView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    if (firstChanged == noRow)
        firstChanged = end == model()->rowCount() - 1 ? start : everyRow;
    QTreeView::rowsInserted(parent, start, end);
}

void RowView::rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end)
{
    firstChanged = everyRow;
    QTreeView::rowsAboutToBeRemoved(parent, start, end);
}

void RowView::doItemsLayout()
{
    delegate->setPlainStyle(isPlainStyle(this));
    if (firstChanged >= 0)
        layOutAppendedRows();
    else
        QTreeView::doItemsLayout();
    firstChanged = noRow;
}

void RowView::layOutAppendedRows()
{
    const QRect before = viewport()->geometry();
    // A layout asks for all to be painted, but no row has moved.
    for (QWidget *painted : {viewport(), header()->viewport()})
        painted->setAttribute(Qt::WA_UpdatesDisabled, true);
    QTreeView::doItemsLayout();
    for (QWidget *painted : {viewport(), header()->viewport()})
        painted->setAttribute(Qt::WA_UpdatesDisabled, false);
    if (viewport()->geometry() == before) {
        const QRect first = visualRect(model()->index(firstChanged, 0));
        viewport()->update(QRect(QPoint(0, first.top()), viewport()->rect().bottomRight()));
    } else {
        viewport()->update();
        header()->viewport()->update();
    }
}

void RowView::paintEvent(QPaintEvent *event)
{
    delegate->setPlainStyle(isPlainStyle(this));
    QTreeView::paintEvent(event);
}

void RowView::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool marked = selectionModel()->isSelected(index) || index == currentIndex();
    const QRect cell(columnViewportPosition(0), option.rect.y(), columnWidth(0), option.rect.height());
    painter->setPen(textColour(option));
    if (marked || !delegate->drawPlain(painter, option, cell, shownPart(index.data().toString())))
        QTreeView::drawRow(painter, option, index);
}
