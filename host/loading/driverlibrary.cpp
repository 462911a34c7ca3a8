#include "driverlibrary.h"

#include <dlfcn.h>
#include <QFile>
#include <QFileInfo>

#include "entrypoints.h"
#include "paths.h"

namespace {

/// Whether a tool that asks the dynamic loader for the driver library gets this one.
bool isFoundAsDriver(void *library)
{
    void *found = dlopen(orvexLibraryName, RTLD_NOW | RTLD_NOLOAD);
    if (found)
        dlclose(found);
    return found == library;
}

/// A recorder's tap, if there is one, stands in front of the library and opens it itself.
QByteArray libraryToLoad(const QString &path)
{
    const QByteArray tap = qgetenv("PADSCOPE_TAP");
    if (tap.isEmpty())
        return QFile::encodeName(path);
    qputenv("PADSCOPE_DRIVER", QFile::encodeName(path));
    return tap;
}

} // namespace

QString loadDriver(const QString &file)
{
    // dlopen() would search a bare name in the system's folders instead of the current one.
    const QString path = QFileInfo(file).absoluteFilePath();
    const QString reason = reasonAgainstLibrary(path);
    if (!reason.isEmpty())
        return file + QStringLiteral(": ") + reason;
    void *library = dlopen(libraryToLoad(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return QFile::decodeName(dlerror());
    if (isFoundAsDriver(library))
        return {};
    dlclose(library);
    return QStringLiteral("%1: not the driver library; expected one with the soname %2")
        .arg(file, QLatin1String(orvexLibraryName));
}
