#pragma once

#include <QLabel>

// A board that sends text without line ends makes rows of a million characters. They are kept whole, but only
// their beginning is measured and painted: laying out all of one would block the GUI thread for a second.

/// The part of a text that is shown: all of it, or the first 8192 characters and an ellipsis.
QString shownPart(const QString &text);

/// Shows the beginning of plain text on one line. text() returns all of it.
class BoundedLabel : public QLabel
{
    // Without Q_OBJECT: to style sheets it is a QLabel.

public:
    using QLabel::QLabel;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
