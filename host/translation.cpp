#include "host/translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QTranslator>

namespace {

bool load(QTranslator &translator, const QLocale &locale)
{
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char *folder : {"../translations", TENDRO_INSTALLED_TRANSLATION_DIR}) {
        if (translator.load(locale, QStringLiteral("padscope"), QStringLiteral("_"),
                            program.filePath(QLatin1String(folder))))
            return true;
    }
    return false;
}

} // namespace

QString installTranslation(QTranslator &translator, const QString &file)
{
    if (!translator.load(QFileInfo(file).absoluteFilePath()))
        return file + QStringLiteral(": not a translation");
    QCoreApplication::installTranslator(&translator);
    return {};
}

void installSystemTranslation(QTranslator &translator)
{
    const QStringList languages = QLocale::system().uiLanguages();
    for (const QString &language : languages) {
        const QLocale locale(language);
        if (locale.language() == QLocale::English || locale.language() == QLocale::C)
            return;
        if (load(translator, locale)) {
            QCoreApplication::installTranslator(&translator);
            return;
        }
    }
}
