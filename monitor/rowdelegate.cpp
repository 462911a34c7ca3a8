#include "monitor/rowdelegate.h"

#include <algorithm>

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QtMath>

namespace {

constexpr char firstPlain = 0x20;
constexpr char lastPlain = 0x7E;
constexpr int mostTexts = 256; ///< kept at a time; a view holds 151

QTextLine layOut(QTextLayout &layout)
{
    QTextOption option;
    option.setWrapMode(QTextOption::ManualWrap);
    layout.setTextOption(option);
    layout.setCacheEnabled(true); // otherwise its glyphs are shaped again
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line;
}

int textMargin(const QWidget *view)
{
    return view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
}

/// Whether no letter leaves the line, so that none needs clipping, and no line is drawn with the letters.
bool isPlain(const QFont &font)
{
    if (font.underline() || font.overline() || font.strikeOut())
        return false;
    constexpr qreal farthestOut = -1;
    const QFontMetricsF metrics(font);
    QString letters;
    for (char letter = firstPlain; letter <= lastPlain; ++letter) {
        const QLatin1Char character(letter);
        if (metrics.leftBearing(character) < farthestOut || metrics.rightBearing(character) < farthestOut)
            return false;
        letters += character;
    }
    const QRectF ink = metrics.tightBoundingRect(letters);
    return ink.top() >= -metrics.ascent() && ink.bottom() <= metrics.descent();
}

} // namespace

bool RowDelegate::isPlain(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.unicode() >= firstPlain && character.unicode() <= lastPlain;
    });
}

bool RowDelegate::takeFont(const QFont &font) const
{
    if (textsFont != font || texts.isEmpty()) {
        texts.clear();
        textsFont = font;
        isPlainFont = ::isPlain(font);
    }
    return isPlainFont;
}

RowDelegate::LaidOut &RowDelegate::laidOut(const QString &text) const
{
    const auto known = texts.find(text);
    if (known != texts.end())
        return *known;
    if (texts.size() >= mostTexts)
        texts.clear();
    QTextLayout layout(text, textsFont);
    const QTextLine line = layOut(layout);
    return *texts.insert(text, {layout.boundingRect(), line.naturalTextWidth(), layout.glyphRuns()});
}

bool RowDelegate::drawPlain(QPainter *painter, const QStyleOptionViewItem &option, const QRect &cell,
                            const QString &text) const
{
    if (!isPlainStyle || !isPlain(text) || !takeFont(option.font))
        return false;
    LaidOut &row = laidOut(text);
    if (row.bounds.height() > cell.height())
        return false;
    const int margin = textMargin(option.widget);
    const QRect textRect = cell.adjusted(margin, 0, -margin, 0);
    const int elideTo = row.width > textRect.width() ? textRect.width() : notElided;
    if (row.elidedTo != elideTo) {
        const QString shown = elideTo == notElided
                                  ? text
                                  : QFontMetricsF(textsFont).elidedText(text, option.textElideMode, elideTo);
        QTextLayout layout(shown, textsFont);
        layOut(layout);
        row.glyphs = layout.glyphRuns();
        row.elidedTo = elideTo;
    }
    const QRect placed = QStyle::alignedRect(Qt::LayoutDirectionAuto, option.displayAlignment,
                                             row.bounds.size().toSize(), textRect);
    // On a scaled screen the lowest pixels of a letter may leave the cell.
    painter->setClipRect(cell);
    for (const QGlyphRun &run : qAsConst(row.glyphs))
        painter->drawGlyphRun(QPointF(textRect.x(), placed.top()), run);
    painter->setClipping(false);
    return true;
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QString text = shownPart(index.data().toString());
    if (!isPlainStyle || !isPlain(text) || !takeFont(option.font))
        return BoundedDelegate::sizeHint(option, index);
    const LaidOut &row = laidOut(text);
    return {qCeil(row.width) + 2 * textMargin(option.widget), qCeil(row.bounds.height())};
}
