#include "paths.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString systemReason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool mayUse(const QByteArray &name, int mode)
{
    return faccessat(AT_FDCWD, name.constData(), mode, AT_EACCESS) == 0;
}

} // namespace

QString reasonAgainstFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (stat(name.constData(), &status) != 0)
        return errno == ENOENT ? QStringLiteral("no such file") : systemReason();
    if (S_ISDIR(status.st_mode))
        return QStringLiteral("a folder, not a file");
    if (!S_ISREG(status.st_mode))
        return QStringLiteral("a device, pipe or socket, not a file");
    return mayUse(name, R_OK) ? QString() : systemReason();
}

QString reasonAgainstLibrary(const QString &path)
{
    QString reason = reasonAgainstFile(path);
    if (!reason.isEmpty())
        return reason;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    return file.read(4) == QByteArray("\177ELF") ? QString() : QStringLiteral("not a library");
}

QString reasonAgainstFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (stat(name.constData(), &status) != 0)
        return errno == ENOENT ? QStringLiteral("no such folder") : systemReason();
    if (!S_ISDIR(status.st_mode))
        return QStringLiteral("a file, not a folder");
    return mayUse(name, R_OK | X_OK) ? QString() : systemReason();
}

QString reasonAgainstWritingTo(const QString &folder)
{
    return mayUse(QFile::encodeName(folder), W_OK | X_OK) ? QString() : systemReason();
}
