#include "host/pluginloading.h"

#include "plugin/tendroplugininterface.h"

#include <algorithm>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

namespace {

bool beginsLikeLibrary(QFile &file)
{
    return file.read(4) == QByteArray("\177ELF");
}

/// \return empty, or why the file is not worth loading
QString reasonAgainstFile(const QString &path, const QPluginLoader &loader)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("can't be read: ") + file.errorString();
    if (!beginsLikeLibrary(file))
        return QStringLiteral("not a library");
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty())
        return QStringLiteral("no metadata, so not a Qt plugin");
    for (const char *key : {"IID", "className"}) {
        if (metaData.value(QLatin1String(key)).toString().isEmpty())
            return QStringLiteral("its metadata has no ") + QLatin1String(key);
    }
    return {};
}

/// Appends to one of the scan's lists.
void loadPlugin(const QString &path, PluginScan &scan)
{
    std::unique_ptr<QPluginLoader, UnloadPlugin> loader(new QPluginLoader(path));
    const auto refuse = [&](const QString &reason) { scan.refusals += path + QStringLiteral(": ") + reason; };

    const QString reason = reasonAgainstFile(path, *loader);
    if (!reason.isEmpty())
        return refuse(reason);
    QObject *instance = loader->instance();
    if (!instance)
        return refuse(QStringLiteral("can't be loaded: ") + loader->errorString());
    auto *tool = qobject_cast<TendroPluginInterface *>(instance);
    if (!tool) {
        return refuse(QStringLiteral("wrong interface, not ") +
                      QLatin1String(qobject_interface_iid<TendroPluginInterface *>()));
    }
    scan.plugins.push_back({std::move(loader), tool, tool->id(), parseCategory(tool->category()), path});
}

/// The library files of the folders, each once, by its real name.
QStringList libraryFiles(const QStringList &folders)
{
    QStringList files;
    for (const QString &folder : folders) {
        const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo &entry : entries) {
            if (QLibrary::isLibrary(entry.fileName()))
                files += entry.canonicalFilePath();
        }
    }
    files.removeDuplicates();
    return files;
}

} // namespace

void UnloadPlugin::operator()(QPluginLoader *loader) const
{
    // Deletes the object. Qt leaves the code mapped by default: its caches may still hold the tool's
    // literals.
    loader->unload();
    delete loader;
}

QStringList defaultPluginFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {QDir::cleanPath(program.filePath(QStringLiteral("../plugin"))),
            QDir::cleanPath(program.filePath(QStringLiteral(TENDRO_INSTALLED_PLUGIN_DIR)))};
}

PluginScan scanPlugins(const QStringList &folders)
{
    PluginScan scan;
    const QStringList files = libraryFiles(folders);
    for (const QString &file : files)
        loadPlugin(file, scan);
    std::stable_sort(
        scan.plugins.begin(), scan.plugins.end(),
        [](const LoadedPlugin &left, const LoadedPlugin &right) { return left.category < right.category; });
    return scan;
}

QString listLine(const LoadedPlugin &plugin)
{
    return QStringLiteral("%1\t%2\t%3\t%4\n")
        .arg(plugin.id, plugin.tool->category(), plugin.tool->version(), plugin.file);
}
