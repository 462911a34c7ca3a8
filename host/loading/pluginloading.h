#pragma once

#include <memory>
#include <QStringList>
#include <vector>

#include "category.h"

class QPluginLoader;
class TendroPluginInterface;

/// Unloads the plugin, which deletes its object.
struct UnloadPlugin
{
    void operator()(QPluginLoader *loader) const;
};

/// A tool that was accepted; unloaded at destruction, before which its widget must be deleted.
struct LoadedPlugin
{
    std::unique_ptr<QPluginLoader, UnloadPlugin> loader;
    /// Owned by the loader.
    TendroPluginInterface *tool;
    // The tool's answers.
    QString id;
    QString description;
    QString copyright;
    QString version;
    QString categoryPath;
    Category category; ///< the path, taken apart
    /// With its whole path.
    QString file;
};

/// What a scan found.
struct PluginScan
{
    /// In the order of their categories.
    std::vector<LoadedPlugin> plugins;
    /// A line for each library file that is no tool, or one with the id of a tool before it: the file and the
    /// reason.
    QStringList errors;
};

/// Where the build (../plugin) and the installation put plugins, as seen from the running program.
QStringList defaultPluginFolders();

/// Loads each library in the folders; other files are ignored, and a file is loaded once.
PluginScan scanPlugins(const QStringList &folders);

/// "id<TAB>category<TAB>version<TAB>file" and a line end.
QString listLine(const LoadedPlugin &plugin);
