#pragma once

#include <QString>

class QTabWidget;
class QWidget;

/// File name for a tab's picture, without its suffix: "Bar Graph" gives "bar-graph".
/// Runs of anything but letters and digits become one hyphen; a caption of nothing else gives "tab".
QString snapshotName(const QString &caption);

/// Creates the folder if it is missing.
/// \return empty, or why no file can be written there, with the option's and the folder's name
QString prepareSnapshotFolder(const QString &folder);

/// Saves a PNG picture of the window with each tab shown in turn, or of the window as it is without tabs.
/// The tab shown before is shown again at the end. Of tabs with equal names all but the first are numbered.
/// \return empty, or the file that could not be written, which is then as it was, and why
QString saveSnapshots(QWidget &window, QTabWidget *tabs, const QString &folder);
