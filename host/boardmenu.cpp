#include "boardmenu.h"

#include <algorithm>
#include <QAction>
#include <QMenu>
#include <QStatusBar>

#include "captions.h"
#include "faultmenu.h"
#include "hostwindow.h"
#include "scenariomenu.h"

namespace {

constexpr int firstId = 1001;
constexpr int messageMs = 10000;

int freeId(const std::vector<int> &taken)
{
    int id = firstId;
    while (std::find(taken.begin(), taken.end(), id) != taken.end())
        ++id;
    return id;
}

} // namespace

BoardMenu::BoardMenu(HostWindow &window, const Simulation &simulation)
    : QObject(&window)
    , window_(window)
    , simulation_(simulation)
{
    QMenu *menu = window.addMenu(tr("Board"));
    menu->addAction(tr("&Plug In"), this, &BoardMenu::plug, QKeySequence(QStringLiteral("Ctrl+Shift+P")));
    unplugMenu_ = menu->addMenu(tr("&Unplug"));
    nameByTitle(*unplugMenu_);
    connect(unplugMenu_, &QMenu::aboutToShow, this, &BoardMenu::fillUnplugMenu);
    auto *faults = new FaultMenu(simulation_, &window);
    connect(faults, &FaultMenu::told, this, &BoardMenu::tell);
    menu->addMenu(faults);
    auto *scenarios = new ScenarioMenu(simulation_, &window);
    connect(scenarios, &ScenarioMenu::told, this, &BoardMenu::tell);
    connect(scenarios, &ScenarioMenu::told, this, &BoardMenu::scenarioChanged);
    menu->addMenu(scenarios);
}

void BoardMenu::plug()
{
    const int id = freeId(simulation_.boards());
    if (!simulation_.plug(id))
        tell(tr("No more boards can be plugged in."));
}

void BoardMenu::fillUnplugMenu()
{
    unplugMenu_->clear();
    const std::vector<int> ids = simulation_.boards();
    for (const int id : ids)
        unplugMenu_->addAction(tr("Board %1").arg(id), this, [this, id] { simulation_.unplug(id); });
    if (ids.empty())
        unplugMenu_->addAction(tr("No board"))->setEnabled(false);
}

void BoardMenu::tell(const QString &message)
{
    window_.statusBar()->showMessage(message, messageMs);
}
