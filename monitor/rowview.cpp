#include "monitor/rowview.h"

#include <cstring>

#include <QApplication>
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

void RowView::doItemsLayout()
{
    delegate->setPlainStyle(isPlainStyle(this));
    QTreeView::doItemsLayout();
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
