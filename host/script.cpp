#include "script.h"

#include <algorithm>
#include <cstdio>
#include <QTabWidget>
#include <QTimer>

#include "hostwindow.h"
#include "options.h"
#include "printerror.h"
#include "snapshots.h"
#include "toolparts.h"

namespace {

QString quoted(const QStringList &names)
{
    return QStringLiteral("\"%1\"").arg(names.join(QLatin1String("\", \"")));
}

void printRows(QWidget &tool)
{
    const QStringList rows = itemRows(tool);
    for (const QString &row : rows)
        std::puts(qUtf8Printable(row));
    std::fflush(stdout);
}

} // namespace

Script::Script(HostWindow &window, const std::vector<LoadedPlugin> &plugins, const Options &options)
    : window_(window)
    , plugins_(plugins)
    , options_(options)
{
    connect(&window, &HostWindow::toolClosing, this, &Script::reportBeforeClosing);
}

QString Script::prepare()
{
    if (!options_.needsTool())
        return {};
    QString error = openTool();
    if (error.isEmpty() && !options_.typedLines.isEmpty() && !lineEditOf(*tool_))
        error = QStringLiteral("--type: the tool has no line edit to type into");
    if (error.isEmpty())
        error = findTabs();
    if (error.isEmpty() && !options_.snapshotFolder.isEmpty())
        error = prepareSnapshotFolder(options_.snapshotFolder);
    return error;
}

QString Script::openTool()
{
    const auto wanted = std::find_if(plugins_.begin(), plugins_.end(), [this](const LoadedPlugin &plugin) {
        return options_.openId.isEmpty() || plugin.id == options_.openId;
    });
    if (wanted == plugins_.end()) {
        QStringList ids;
        for (const LoadedPlugin &plugin : plugins_)
            ids += plugin.id;
        return QStringLiteral("--open %1: no such tool; there is %2").arg(options_.openId, quoted(ids));
    }
    tool_ = window_.openTool(*wanted);
    return tool_ ? QString() : QStringLiteral("%1 can't be opened").arg(wanted->id);
}

QString Script::findTabs()
{
    tabs_ = tabsOf(*tool_);
    for (const TabStop &stop : options_.tabs) {
        const int index = tabs_ ? indexOfTab(*tabs_, stop.caption) : -1;
        if (index < 0) {
            const QStringList captions = tabs_ ? tabCaptions(*tabs_) : QStringList();
            return QStringLiteral("--tab %1: no such tab; there is %2").arg(stop.caption, quoted(captions));
        }
        tabIndices_.push_back(index);
    }
    return {};
}

void Script::start()
{
    clock_.start();
    QTimer::singleShot(0, this, [this] {
        typeLines();
        showTab(0);
    });
}

void Script::typeLines()
{
    for (const QString &line : options_.typedLines)
        typeLine(*lineEditOf(*tool_), line);
}

void Script::showTab(std::size_t stop)
{
    if (stop == tabIndices_.size())
        return closeInTime();
    tabs_->setCurrentIndex(tabIndices_[stop]);
    QTimer::singleShot(options_.tabs[stop].durationMs, this, [this, stop] { showTab(stop + 1); });
}

void Script::closeInTime()
{
    if (!options_.closeAfterMs && options_.tabs.empty())
        return;
    const qint64 remainingMs = options_.closeAfterMs.value_or(0) - clock_.elapsed();
    QTimer::singleShot(static_cast<int>(std::max<qint64>(remainingMs, 0)), &window_, &QWidget::close);
}

void Script::reportBeforeClosing(QWidget *tool)
{
    if (options_.rows)
        printRows(*tool);
    if (options_.snapshotFolder.isEmpty())
        return;
    const QString error = saveSnapshots(window_, tabsOf(*tool), options_.snapshotFolder);
    if (!error.isEmpty()) {
        printError(error);
        failed_ = true;
    }
}
