#pragma once

#include <QString>
#include <QStringList>

/// Installs a translation (a .qm file) for the rest of the program.
/// \return empty, or why it can't be used, with the file's name
QString installTranslation(const QString &file);

/// Installs catalogues ("padscope" for padscope_de.qm) and Qt's own, in the first of the system's languages
/// that one of them exists for. Looks where the build (../translations) and the installation put them. Stops
/// at English, the language of the source.
void installSystemLanguage(const QStringList &catalogues);
