#include "windowmemory.h"

#include <algorithm>
#include <QSettings>

#include "hostwindow.h"

namespace {

const QLatin1String geometryKey("geometry");
const QLatin1String toolKey("tool");

} // namespace

WindowMemory::WindowMemory(HostWindow &window, const std::vector<LoadedPlugin> &plugins, QSettings &settings)
    : window_(window)
    , plugins_(plugins)
    , settings_(settings)
{
    connect(&window, &HostWindow::closing, this, &WindowMemory::save);
}

void WindowMemory::restore(bool alsoTool)
{
    // Before the geometry: a tool makes the window grow, which the user may have undone.
    if (alsoTool)
        restoreTool();
    const QByteArray geometry = settings_.value(geometryKey).toByteArray();
    // Qt also accepts a truncated geometry, and makes the window tiny.
    if (geometry.size() == window_.saveGeometry().size())
        window_.restoreGeometry(geometry);
}

void WindowMemory::restoreTool()
{
    const QString id = settings_.value(toolKey).toString();
    const auto tool = std::find_if(plugins_.begin(), plugins_.end(),
                                   [&](const LoadedPlugin &plugin) { return plugin.id == id; });
    if (tool != plugins_.end())
        window_.openTool(*tool);
}

void WindowMemory::save()
{
    const LoadedPlugin *open = window_.openPlugin();
    settings_.setValue(geometryKey, window_.saveGeometry());
    settings_.setValue(toolKey, open ? open->id : QString());
}
