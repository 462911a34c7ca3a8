#include "host/driverlibrary.h"

#include "host/paths.h"

#include <dlfcn.h>
#include <QFile>
#include <QFileInfo>

QString loadDriver(const QString &file)
{
    // A bare name would be searched in the system's folders instead of the current one.
    const QString path = QFileInfo(file).absoluteFilePath();
    const QString reason = reasonAgainstLibrary(path);
    if (!reason.isEmpty())
        return file + QStringLiteral(": ") + reason;
    if (dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL))
        return {};
    return QFile::decodeName(dlerror());
}
