#pragma once

#include <QAccessible>

/// A text that assistive programs read. Qt 5.15's own search for the word or sentence at an offset never ends
/// at the end of a text, nor before its first word, and would stop the whole host.
class AccessText : public QAccessibleTextInterface
{
public:
    /// As Qt's own where that one returns; at the end of the text what lies behind the last word, which is
    /// nothing if the text ends with one.
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int *start,
                         int *end) const override;
};
