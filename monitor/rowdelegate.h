#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QHash>

#include "monitor/boundedtext.h"

/// Measures and draws rows just as the style does, but lays a plain text out once and not each time.
///
/// A plain text is one run from left to right: printable ASCII, without tabs and line ends. A text that is
/// shown in part is not plain. GUI thread only.
class RowDelegate : public BoundedDelegate
{
public:
    using BoundedDelegate::BoundedDelegate;

    static bool isPlain(const QString &text);

    /// Whether rows look as this class draws them: set while no style sheet has rules for items, and no style
    /// of the host draws them in its own way. Otherwise the style does all.
    void setPlainStyle(bool plain) { isPlainStyle = plain; }

    /// Draws a row's text, elided when it is too wide.
    /// \param cell the row's rectangle in its column
    /// \return false, with nothing drawn, when only the style can draw it
    bool drawPlain(QPainter *painter, const QStyleOptionViewItem &option, const QRect &cell,
                   const QString &text) const;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    struct LaidOut
    {
        QRectF bounds;
        qreal width; ///< without blanks at the end
        QList<QGlyphRun> glyphs;
        int elidedTo = notElided; ///< width for which the glyphs were made
    };
    static constexpr int notElided = -1;

    bool takeFont(const QFont &font) const;
    LaidOut &laidOut(const QString &text) const;

    bool isPlainStyle = false;
    // All of these follow from the texts and fonts that came.
    mutable QHash<QString, LaidOut> texts;
    mutable QFont textsFont;
    mutable bool isPlainFont = false;
};
