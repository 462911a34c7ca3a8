#include "mainwindow/settingsfile.h"

#include <new>

#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

constexpr qint64 mostBytes = 1 << 16; ///< lists nested in so many take half of a stack of 8 MiB

/// Whether a file is too small for values that are nested too deeply, or has none in Qt's binary form.
bool isShallow(const QString &path)
{
    QFile file(path);
    if (file.size() <= mostBytes || !file.open(QIODevice::ReadOnly))
        return true;
    const QByteArray bytes = file.readAll();
    // Such a value begins with '@', which may be written with an escape.
    return !bytes.contains('@') && !bytes.contains('\\');
}

bool isDecodable(const QSettings &settings)
{
    try {
        settings.allKeys();
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

bool isReadable(const QSettings &settings)
{
    const QString own = settings.fileName();
    // The organisation's file lies beside the folder of its programs' files.
    const QString shared = QFileInfo(own).path() + QLatin1String(".conf");
    if (settings.fallbacksEnabled() && !isShallow(shared))
        return false;
    return isShallow(own) && isDecodable(settings);
}

} // namespace

void setAsideDamagedFile(QSettings &settings)
{
    if (isReadable(settings))
        return;
    // It may be a file of the whole organisation, or of the system.
    settings.setFallbacksEnabled(false);
    if (isReadable(settings))
        return;
    const QString aside = settings.fileName() + QLatin1String(".damaged-");
    int number = 1;
    while (QFile::exists(aside + QString::number(number)))
        ++number;
    QFile::rename(settings.fileName(), aside + QString::number(number));
    settings.sync();
}
