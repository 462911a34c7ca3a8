#include "monitor/rowview.h"

#include <cstring>

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>
#include <QStyle>

#include "monitor/framepacer.h"
#include "monitor/rowdelegate.h"

namespace {

/// Whether the widgets' style draws items as QCommonStyle does.
bool isCommonStyle(const QStyle *style)
{
    const char *name = style->metaObject()->className();
    return std::strcmp(name, "QFusionStyle") == 0 || std::strcmp(name, "QWindowsStyle") == 0;
}

/// Whether the view's looks are those that the monitor gives it, and not a style sheet of the host.
bool hasOwnLooks(const QWidget *view)
{
    if (!view->styleSheet().isEmpty() || view->testAttribute(Qt::WA_SetStyle))
        return false;
    const QWidget *monitor = view->parentWidget();
    for (const QWidget *above = monitor; above; above = above->parentWidget()) {
        if (above != monitor && !above->styleSheet().isEmpty())
            return false;
    }
    return true;
}

bool isPlain(const QWidget *view)
{
    return isCommonStyle(QApplication::style()) && view->layoutDirection() == Qt::LeftToRight &&
           hasOwnLooks(view);
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

Widgets RowView::paced() const
{
    QScrollBar *vertical = verticalScrollBar();
    QScrollBar *horizontal = horizontalScrollBar();
    return {viewport(), vertical, vertical->parentWidget(), horizontal, horizontal->parentWidget()};
}

bool RowView::event(QEvent *event)
{
    // Scroll bars are placed, and one above the other, by queued calls.
    const Unpainted untilFrameEnd(event->type() == QEvent::MetaCall ? pacer->held() : Widgets());
    switch (event->type()) {
    case QEvent::LayoutDirectionChange:
    case QEvent::PaletteChange:
        takeStyle();
        viewport()->update();
        [[fallthrough]];
    case QEvent::FontChange:
    case QEvent::StyleChange:
        firstChanged = everyRow;
        break;
    default:
        break;
    }
    return QTreeView::event(event);
}

/// A change of style makes a layout, which calls this.
void RowView::takeStyle()
{
    const bool plain = isPlain(this);
    delegate->setPlainStyle(plain);
    // A view that is known to paint its whole background is scrolled by moving its pixels.
    const QBrush brush = background();
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent,
                             plain && brush.style() == Qt::SolidPattern && brush.isOpaque());
}

/// The style sheet paints it on the frame, below the viewport.
QBrush RowView::background() const
{
    return viewport()->palette().brush(viewport()->backgroundRole());
}

/// Rows and columns that have changed are laid out by timers.
void RowView::timerEvent(QTimerEvent *event)
{
    const Unpainted untilFrameEnd(pacer->held());
    QTreeView::timerEvent(event);
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
    // Again, should the rows have been laid out meanwhile.
    firstChanged = everyRow;
}

void RowView::doItemsLayout()
{
    takeStyle();
    if (firstChanged >= 0)
        layOutAppendedRows();
    else
        QTreeView::doItemsLayout();
    firstChanged = noRow;
}

void RowView::layOutAppendedRows()
{
    const QRect before = viewport()->geometry();
    QRect first;
    {
        // A layout asks for all to be painted, but no row has moved.
        const Unpainted quiet({viewport(), header()->viewport()});
        isAppending = true;
        QTreeView::doItemsLayout();
        isAppending = false;
        // Asked for now, since the header may be laid out for it.
        first = visualRect(model()->index(firstChanged, 0));
    }
    if (viewport()->geometry() == before) {
        viewport()->update(QRect(QPoint(0, first.top()), viewport()->rect().bottomRight()));
    } else {
        viewport()->update();
        header()->viewport()->update();
    }
}

/// With the scroll bar in sight, rows that are appended change nothing but how far it goes.
void RowView::updateGeometries()
{
    QScrollBar *bar = verticalScrollBar();
    if (isAppending && verticalScrollMode() == ScrollPerItem && bar->maximum() > 0)
        bar->setMaximum(model()->rowCount() - bar->pageStep());
    else
        QTreeView::updateGeometries();
}

void RowView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    // The focus is shaded, and not to the same pixels at every height.
    viewport()->update(visualRect(currentIndex()));
}

void RowView::paintEvent(QPaintEvent *event)
{
    if (viewport()->testAttribute(Qt::WA_OpaquePaintEvent)) {
        QPainter painter(viewport());
        for (const QRect &rect : event->region())
            painter.fillRect(rect, background());
    }
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
