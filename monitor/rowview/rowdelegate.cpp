#include "rowdelegate.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <QApplication>
#include <QPaintEngine>
#include <QPainter>
#include <QStyle>

#include "boundedtext.h"

namespace {

constexpr int maxCached = 256; ///< texts; a view holds 151 rows

/// Whether a style draws items as QCommonStyle does.
bool isCommonStyle(const QStyle *style)
{
    const char *name = style->metaObject()->className();
    return std::strcmp(name, "QFusionStyle") == 0 || std::strcmp(name, "QWindowsStyle") == 0;
}

/// Whether nothing is painted behind, around or through the text.
bool isBare(const QStyleOptionViewItem &item)
{
    constexpr QStyle::State marked =
        QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver | QStyle::State_Editing;
    const QFont &font = item.font;
    return !(item.state & marked) && item.backgroundBrush.style() == Qt::NoBrush && !font.underline() &&
           !font.overline() && !font.strikeOut() &&
           item.displayAlignment == (Qt::AlignLeft | Qt::AlignVCenter);
}

int textMargin(const QWidget *view)
{
    return view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
}

/// Whether the device is a raster with the view's resolution, on which fonts have the same size in pixels.
bool isScreen(const QPainter *painter, const QWidget *view)
{
    return painter->paintEngine()->type() == QPaintEngine::Raster &&
           painter->device()->logicalDpiX() == view->logicalDpiX() &&
           painter->device()->logicalDpiY() == view->logicalDpiY();
}

/// Whether a static text is painted at the same subpixels as by the style: the raster engine places its
/// glyphs at quarters of a pixel.
bool isInQuarters(const QTransform &toDevice)
{
    const auto isWhole = [](qreal quarters) { return quarters == std::floor(quarters); };
    return toDevice.type() <= QTransform::TxScale && toDevice.m11() == toDevice.m22() && toDevice.m11() > 0 &&
           isWhole(toDevice.m11() * 4) && isWhole(toDevice.dx() * 4) && isWhole(toDevice.dy() * 4);
}

QStaticText layOut(const QString &text)
{
    QStaticText layout(text);
    layout.setTextFormat(Qt::PlainText);
    QTextOption option;
    option.setWrapMode(QTextOption::ManualWrap);
    layout.setTextOption(option);
    return layout;
}

QColor textColour(const QStyleOptionViewItem &item)
{
    QPalette::ColorGroup group = QPalette::Disabled;
    if (item.state & QStyle::State_Enabled)
        group = item.state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
    return item.palette.color(group, QPalette::Text);
}

} // namespace

RowDelegate::RowDelegate(const QString &styleSheet, QObject *parent)
    : QStyledItemDelegate(parent)
    , ownStyleSheet(styleSheet)
    , ownStyleSheetIsOneRule(styleSheet.count(QLatin1Char('{')) == 1)
{
}

bool RowDelegate::isPlain(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.unicode() >= 0x20 && character.unicode() <= 0x7E;
    });
}

QString RowDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    return shownPart(QStyledItemDelegate::displayText(value, locale));
}

void RowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    painter->save();
    const bool isPainted = isPlainItem(item) && isBare(item) && isScreen(painter, item.widget) &&
                           isInQuarters(painter->deviceTransform()) && paintPlain(painter, item);
    painter->restore();
    if (!isPainted)
        QStyledItemDelegate::paint(painter, option, index);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    if (!isPlainItem(item) || index.data(Qt::SizeHintRole).isValid())
        return QStyledItemDelegate::sizeHint(option, index);
    checkScreen(item.widget);
    const QMetaObject *style = QApplication::style()->metaObject();
    if (hints.size() >= maxCached || hintFont != item.font || hintStyle != style) {
        hints.clear();
        hintFont = item.font;
        hintStyle = style;
    }
    QSize &hint = hints[item.text];
    if (!hint.isValid())
        hint = QStyledItemDelegate::sizeHint(option, index);
    return hint;
}

bool RowDelegate::isPlainItem(const QStyleOptionViewItem &item) const
{
    return item.features == QStyleOptionViewItem::HasDisplay && isPlain(item.text) &&
           isPlainView(item.widget);
}

bool RowDelegate::isPlainView(const QWidget *view) const
{
    if (!view || !ownStyleSheetIsOneRule || view->layoutDirection() != Qt::LeftToRight ||
        !isCommonStyle(QApplication::style()))
        return false;
    for (const QWidget *widget = view; widget; widget = widget->parentWidget()) {
        if (widget->testAttribute(Qt::WA_SetStyle))
            return false;
        if (widget->styleSheet() != (widget == view->parentWidget() ? ownStyleSheet : QString()))
            return false;
    }
    return true;
}

/// Clears the caches when the view has moved to a screen of another resolution. They are keyed by font, and
/// fonts compare equal across resolutions.
void RowDelegate::checkScreen(const QWidget *view) const
{
    if (view->logicalDpiY() == screenDpi)
        return;
    screenDpi = view->logicalDpiY();
    layouts.clear();
    hints.clear();
}

/// The layout of a text in the painter's font.
QStaticText &RowDelegate::layoutOf(const QString &text, const QPainter *painter) const
{
    const bool isFull = layouts.size() >= maxCached && !layouts.contains(text);
    if (isFull || layoutFont != painter->font()) {
        layouts.clear();
        layoutFont = painter->font();
    }
    QStaticText &layout = layouts[text];
    if (layout.text().isEmpty()) {
        layout = layOut(text);
        layout.prepare(painter->worldTransform(), layoutFont);
    }
    return layout;
}

/// \return false, with nothing painted, for a text that is larger than the item
bool RowDelegate::paintPlain(QPainter *painter, const QStyleOptionViewItem &item) const
{
    checkScreen(item.widget);
    painter->setFont(item.font);
    const QStaticText &layout = layoutOf(item.text, painter);
    const int margin = textMargin(item.widget);
    const QRect textRect = item.rect.adjusted(margin, 0, -margin, 0);
    const QSizeF size = layout.size();
    if (size.width() > textRect.width() || size.height() > textRect.height())
        return false;
    const QRect placed = QStyle::alignedRect(Qt::LeftToRight, item.displayAlignment, size.toSize(), textRect);
    painter->setPen(textColour(item));
    painter->setClipRect(item.rect); // as the style does: on a scaled screen letters may leave the item
    painter->drawStaticText(textRect.x(), placed.top(), layout);
    return true;
}
