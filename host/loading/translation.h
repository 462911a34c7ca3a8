#pragma once

#include <QString>
#include <QStringList>

/// Installs a translation (a .qm file) for the rest of the program.
/// \return empty, or why it can't be used, with the file's name
QString installTranslation(const QString &file);

/// Installs catalogues ("padscope" for padscope_de.qm) in the first of the system's languages that there is
/// one of them for, from where the build (../translations) and the installation put them, and with them the
/// toolkit's own. English, which everything is written in, needs none.
void installSystemLanguage(const QStringList &catalogues);
