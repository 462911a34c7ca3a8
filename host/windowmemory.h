#pragma once

#include <QObject>

#include "pluginloading.h"

class HostWindow;
class QSettings;

/// Saves and restores the window's geometry and the tool that it shows.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    /// Saves when the window closes. All three must outlive this.
    WindowMemory(HostWindow &window, const std::vector<LoadedPlugin> &plugins, QSettings &settings);

    /// Restores the geometry, and the tool if asked to.
    void restore(bool alsoTool);

private:
    void restoreTool();
    void save();

    HostWindow &window_;
    const std::vector<LoadedPlugin> &plugins_;
    QSettings &settings_;
};
