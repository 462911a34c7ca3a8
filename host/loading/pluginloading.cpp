#include "pluginloading.h"

#include <algorithm>
#include <QCoreApplication>
#include <QDir>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

#include "paths.h"
#include "tendroplugininterface.h"
#include "thrown.h"

namespace {

using Loader = std::unique_ptr<QPluginLoader, UnloadPlugin>;

/// \return empty, or why the file is not worth loading
QString reasonAgainstPlugin(const QString &path, const QPluginLoader &loader)
{
    QString reason = reasonAgainstLibrary(path);
    if (!reason.isEmpty())
        return reason;
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty())
        return QStringLiteral("no metadata, so not a Qt plugin");
    for (const char *key : {"IID", "className"}) {
        if (metaData.value(QLatin1String(key)).toString().isEmpty())
            return QStringLiteral("its metadata has no ") + QLatin1String(key);
    }
    return {};
}

const LoadedPlugin *find(const PluginScan &scan, const QString &id)
{
    const auto found = std::find_if(scan.plugins.begin(), scan.plugins.end(),
                                    [&](const LoadedPlugin &plugin) { return plugin.id == id; });
    return found == scan.plugins.end() ? nullptr : &*found;
}

LoadedPlugin describe(Loader loader, TendroPluginInterface &tool, const QString &path)
{
    const QString category = tool.category();
    return {std::move(loader),
            &tool,
            tool.id(),
            tool.description(),
            tool.copyright(),
            tool.version(),
            category,
            parseCategory(category),
            path};
}

/// Appends the tool to the scan, or gives the reason against it.
QString acceptTool(Loader loader, const QString &path, PluginScan &scan)
{
    QObject *instance = loader->instance();
    if (!instance)
        return QStringLiteral("can't be loaded: ") + loader->errorString();
    auto *tool = qobject_cast<TendroPluginInterface *>(instance);
    if (!tool) {
        return QStringLiteral("wrong interface, not ") +
               QLatin1String(qobject_interface_iid<TendroPluginInterface *>());
    }
    LoadedPlugin plugin = describe(std::move(loader), *tool, path);
    if (const LoadedPlugin *other = find(scan, plugin.id))
        return QStringLiteral("its id \"%1\" is that of %2").arg(plugin.id, other->file);
    scan.plugins.push_back(std::move(plugin));
    return {};
}

/// Appends to one of the scan's lists.
void loadPlugin(const QString &path, PluginScan &scan)
{
    Loader loader(new QPluginLoader(path));
    QString reason = reasonAgainstPlugin(path, *loader);
    if (reason.isEmpty()) {
        try {
            reason = acceptTool(std::move(loader), path, scan);
        } catch (...) {
            reason = QStringLiteral("it throws: ") + thrownText();
        }
    }
    if (!reason.isEmpty())
        scan.errors += path + QStringLiteral(": ") + reason;
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
        .arg(plugin.id, plugin.categoryPath, plugin.version, plugin.file);
}
