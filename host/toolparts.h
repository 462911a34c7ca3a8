#pragma once

#include <QString>
#include <QStringList>

class QLineEdit;
class QTabWidget;
class QWidget;

// What the host can find in the widget of any tool, without knowing the tool.

/// \return the first tab widget, or null
QTabWidget *tabsOf(QWidget &tool);

/// Captions of the tabs, without mnemonics.
QStringList tabCaptions(const QTabWidget &tabs);

/// The tab with this caption, shown or untranslated. Tools translate it in the context of the class that
/// makes the tabs, which is that of a widget around them. \return its index, or -1
int indexOfTab(const QTabWidget &tabs, const QString &caption);

/// \return the first line edit that takes text and is no part of a spin box or combo box, or null
QLineEdit *lineEditOf(QWidget &tool);

/// Types the text and then Return into the line edit, key by key, as a user would.
void typeLine(QLineEdit &line, const QString &text);

/// A tab-separated line without line end for each top-level row of each item view, except the lists of combo
/// boxes.
QStringList itemRows(QWidget &tool);
