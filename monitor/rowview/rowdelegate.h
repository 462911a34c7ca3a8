#pragma once

#include <QFont>
#include <QHash>
#include <QStaticText>
#include <QStyledItemDelegate>

/// Paints items of text as the style does, and caches the layouts of plain rows.
///
/// A row is plain when it is printable ASCII, in one line from left to right, with neither selection, focus,
/// decoration nor background, and no style sheet or style of the host applies. Everything else is painted by
/// the style. Of a text above 8192 characters only the beginning is measured and painted. GUI thread only.
class RowDelegate : public QStyledItemDelegate
{
public:
    /// \param styleSheet that of the view's parent; with more than one rule no row is plain
    RowDelegate(const QString &styleSheet, QObject *parent);

    /// Whether a text is printable ASCII, and not empty.
    static bool isPlain(const QString &text);

    QString displayText(const QVariant &value, const QLocale &locale) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    bool isPlainItem(const QStyleOptionViewItem &item) const;
    bool isPlainView(const QWidget *view) const;
    void checkScreen(const QWidget *view) const;
    QStaticText &layoutOf(const QString &text, const QPainter *painter) const;
    bool paintPlain(QPainter *painter, const QStyleOptionViewItem &item) const;

    const QString ownStyleSheet;
    const bool ownStyleSheetIsOneRule;           ///< a font's name from the settings may add rules
    mutable int screenDpi = 0;                   ///< of the cached layouts and hints
    mutable QHash<QString, QStaticText> layouts; ///< of the texts painted last, in layoutFont
    mutable QFont layoutFont;
    mutable QHash<QString, QSize> hints; ///< of the texts measured last, with hintFont and hintStyle
    mutable QFont hintFont;
    mutable const QMetaObject *hintStyle = nullptr;

    friend struct Inspect;
};
