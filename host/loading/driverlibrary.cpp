#include "driverlibrary.h"

#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <QFile>
#include <QFileInfo>

#include "entrypoints.h"
#include "paths.h"

namespace {

/// Empty in a program that runs with rights of another user.
QByteArray environmentVariable(const char *name)
{
    return secure_getenv(name);
}

/// Through a recorder's tap, if there is one, which stands in front of the library and opens it first.
void *openLibrary(const QByteArray &path)
{
    const QByteArray tap = environmentVariable("PADSCOPE_TAP");
    if (tap.isEmpty())
        return dlopen(path.constData(), RTLD_NOW | RTLD_LOCAL);
    qputenv("PADSCOPE_DRIVER", path);
    if (!dlopen(tap.constData(), RTLD_NOW | RTLD_LOCAL))
        return nullptr;
    const QByteArray chosen = environmentVariable("PADSCOPE_DRIVER_OPTION");
    return dlopen((chosen.isEmpty() ? path : chosen).constData(), RTLD_NOW | RTLD_LOCAL);
}

/// The name by which a tool asks the dynamic loader for the library; empty when it has none.
QByteArray sonameOf(void *library)
{
    link_map *map = nullptr;
    if (dlinfo(library, RTLD_DI_LINKMAP, &map) != 0)
        return {};
    const char *texts = nullptr;
    ElfW(Xword) name = 0; // index in the texts, which begin with a zero
    for (const ElfW(Dyn) *entry = map->l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_STRTAB)
            // NOLINTNEXTLINE(performance-no-int-to-ptr): as the loader gives it
            texts = reinterpret_cast<const char *>(entry->d_un.d_ptr);
        else if (entry->d_tag == DT_SONAME)
            name = entry->d_un.d_val;
    }
    return texts ? QByteArray(texts + name) : QByteArray();
}

} // namespace

QString loadDriver(const QString &file)
{
    // dlopen() would search a bare name in the system's folders instead of the current one.
    const QString path = QFileInfo(file).absoluteFilePath();
    const QString reason = reasonAgainstLibrary(path);
    if (!reason.isEmpty())
        return file + QStringLiteral(": ") + reason;
    void *library = openLibrary(QFile::encodeName(path));
    if (!library)
        return QFile::decodeName(dlerror());
    if (sonameOf(library) == orvexLibraryName)
        return {};
    dlclose(library);
    return QStringLiteral("%1: not the driver library; expected one with the soname %2")
        .arg(file, QLatin1String(orvexLibraryName));
}
