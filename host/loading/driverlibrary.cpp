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

} // namespace

QString loadDriver(const QString &file)
{
    // dlopen() would search a bare name in the system's folders instead of the current one.
    const QString path = QFileInfo(file).absoluteFilePath();
    const QString reason = reasonAgainstLibrary(path);
    if (!reason.isEmpty())
        return file + QStringLiteral(": ") + reason;
    void *library = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return QFile::decodeName(dlerror());
    if (isFoundAsDriver(library))
        return {};
    dlclose(library);
    return QStringLiteral("%1: not the driver library; expected one with the soname %2")
        .arg(file, QLatin1String(orvexLibraryName));
}
