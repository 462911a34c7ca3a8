#pragma once

#include <QString>

class QTranslator;

/// Loads and installs a translation (a .qm file).
/// \return empty, or why it can't be used, with the file's name
QString installTranslation(QTranslator &translator, const QString &file);

/// Installs the tools' translation for the first of the system's languages that there is one for, from where
/// the build (../translations) and the installation put them. English, which the tools are written in, needs
/// none.
void installSystemTranslation(QTranslator &translator);
