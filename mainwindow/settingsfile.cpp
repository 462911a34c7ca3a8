#include "mainwindow/settingsfile.h"

#include <new>

#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

constexpr int mostZeros = 3 * 4096; ///< lists nested 4096 deep take a quarter of a stack of 8 MiB at most

/// \return 16 or more for what is no digit
unsigned int digitOf(char character)
{
    if (character >= '0' && character <= '9')
        return static_cast<unsigned int>(character - '0');
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned int>(lower - 'a' + 10) : 16;
}

/// The character that an escape stands for, which keeps 16 bits of a number of any length.
/// \param at where the number begins; is set behind it
unsigned int escapedCharacter(const QByteArray &text, int &at, unsigned int base)
{
    unsigned int value = 0;
    for (; at < text.size() && digitOf(text.at(at)) < base; ++at)
        value = value * base + digitOf(text.at(at));
    return value & 0xFFFF;
}

/// How many characters of a settings file are zeros, as they are or as escapes.
int zerosIn(const QByteArray &text)
{
    int zeros = 0;
    for (int at = 0; at < text.size();) {
        const char character = text.at(at++);
        if (character != '\\' || at == text.size()) {
            zeros += character == '\0';
            continue;
        }
        const char escaped = text.at(at);
        if (escaped == 'x')
            zeros += escapedCharacter(text, ++at, 16) == 0;
        else if (escaped >= '0' && escaped <= '7')
            zeros += escapedCharacter(text, at, 8) == 0;
        else
            ++at;
    }
    return zeros;
}

/// Whether no value can be nested too deeply: each level begins with its type and so with three zeros, which
/// no typed text has.
bool isShallow(const QString &path)
{
    QFile file(path);
    return !file.open(QIODevice::ReadOnly) || zerosIn(file.readAll()) <= mostZeros;
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
