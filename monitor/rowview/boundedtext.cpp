#include "boundedtext.h"

#include <QPainter>
#include <QStyle>

namespace {

constexpr int maxShownLength = 8192; ///< characters: wider than any screen, laid out in milliseconds
constexpr QChar ellipsis(0x2026);

QSize sizeOf(const QLabel *label, const QString &text)
{
    constexpr int farAway = 1 << 20;
    // Vertical centring would round half a pixel up.
    const int alignment = int(label->alignment() & Qt::AlignHorizontal_Mask);
    const QRect bounds = label->fontMetrics().boundingRect(QRect(0, 0, farAway, farAway), alignment, text);
    const int edge = 2 * (label->margin() + label->frameWidth());
    return bounds.size() + QSize(edge, edge);
}

} // namespace

QString shownPart(const QString &text)
{
    return text.size() > maxShownLength ? text.left(maxShownLength) + ellipsis : text;
}

QSize BoundedLabel::sizeHint() const
{
    return text().size() > maxShownLength ? sizeOf(this, shownPart(text())) : QLabel::sizeHint();
}

QSize BoundedLabel::minimumSizeHint() const
{
    return text().size() > maxShownLength ? sizeHint() : QLabel::minimumSizeHint();
}

void BoundedLabel::paintEvent(QPaintEvent *event)
{
    if (text().size() <= maxShownLength) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, contentsRect(),
                          int(QStyle::visualAlignment(layoutDirection(), alignment())), palette(),
                          isEnabled(), shownPart(text()), foregroundRole());
}
