#pragma once

#include "pluginloading.h"

#include <QObject>

class HostWindow;
class QSettings;

/// Keeps the window's place and size, and the tool that it shows, from one start to the next.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    /// What is kept is written when the window closes. All three must outlive this.
    WindowMemory(HostWindow &window, const std::vector<LoadedPlugin> &plugins, QSettings &settings);

    /// Gives the window its place and size back, and the tool too if it is asked for.
    void restore(bool alsoTool);

private:
    void restoreTool();
    void save();

    HostWindow &window_;
    const std::vector<LoadedPlugin> &plugins_;
    QSettings &settings_;
};
