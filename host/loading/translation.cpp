#include "translation.h"

#include <memory>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

/// The application owns the translator.
void install(std::unique_ptr<QTranslator> translator)
{
    translator->setParent(QCoreApplication::instance());
    QCoreApplication::installTranslator(translator.release());
}

/// \return whether there is one for the locale or its language
bool installCatalogue(const QLocale &locale, const QString &name, const QStringList &folders)
{
    auto translator = std::make_unique<QTranslator>();
    for (const QString &folder : folders) {
        if (translator->load(locale, name, QStringLiteral("_"), folder)) {
            install(std::move(translator));
            return true;
        }
    }
    return false;
}

bool installLanguage(const QLocale &locale, const QStringList &catalogues)
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QStringList folders{program.filePath(QStringLiteral("../translations")),
                              program.filePath(QStringLiteral(TENDRO_INSTALLED_TRANSLATION_DIR))};
    bool found = false;
    for (const QString &name : catalogues)
        found = installCatalogue(locale, name, folders) || found;
    if (found)
        installCatalogue(locale, QStringLiteral("qtbase"),
                         {QLibraryInfo::location(QLibraryInfo::TranslationsPath)});
    return found;
}

} // namespace

QString installTranslation(const QString &file)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QFileInfo(file).absoluteFilePath()))
        return file + QStringLiteral(": not a translation");
    install(std::move(translator));
    return {};
}

void installSystemLanguage(const QStringList &catalogues)
{
    const QStringList languages = QLocale::system().uiLanguages();
    for (const QString &language : languages) {
        const QLocale locale(language);
        if (locale.language() == QLocale::English || locale.language() == QLocale::C)
            return;
        if (installLanguage(locale, catalogues))
            return;
    }
}
