#include "mainwindow/settingsfile.h"

#include <new>

#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

constexpr int longestLine = 1 << 16; ///< bytes; lists nested in so many take half of a stack of 8 MiB

/// Whether a line may hold a value in Qt's binary form, which begins with '@', as it is or as an escape.
bool mayBeEncoded(const QByteArray &line)
{
    return line.contains('@') || line.contains("\\x0") || line.contains("\\x40") || line.contains("\\0") ||
           line.contains("\\1");
}

/// Whether no value can be nested too deeply: each is on a line, which a backslash at its end continues.
bool isShallow(const QString &path)
{
    QFile file(path);
    if (file.size() <= longestLine || !file.open(QIODevice::ReadOnly))
        return true;
    QByteArray line;
    while (!file.atEnd()) {
        line += file.readLine();
        if (line.size() > longestLine && mayBeEncoded(line))
            return false;
        if (!line.endsWith("\\\n"))
            line.clear();
    }
    return true;
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
    settings.setFallbacksEnabled(true);
    settings.setFallbacksEnabled(isReadable(settings));
}
