#include "settingsfile.h"

#include <new>
#include <QFile>
#include <QSettings>

namespace {

bool isDecodable(const QSettings &settings)
{
    try {
        settings.allKeys();
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace

void quarantineDamagedFile(QSettings &settings)
{
    if (isDecodable(settings))
        return;
    // It may be a file of the whole organisation, or of the system.
    settings.setFallbacksEnabled(false);
    if (isDecodable(settings))
        return;
    const QString newName = settings.fileName() + QLatin1String(".damaged-");
    int number = 1;
    while (QFile::exists(newName + QString::number(number)))
        ++number;
    QFile::rename(settings.fileName(), newName + QString::number(number));
    settings.sync();
    settings.setFallbacksEnabled(true);
    settings.setFallbacksEnabled(isDecodable(settings));
}
