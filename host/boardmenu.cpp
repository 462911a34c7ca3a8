#include "host/boardmenu.h"

#include "host/hostwindow.h"

#include <algorithm>
#include <QAction>
#include <QMenu>
#include <QStatusBar>

namespace {

constexpr int firstId = 1001;
constexpr int messageMs = 10'000;

int freeId(const std::vector<int> &taken)
{
    int id = firstId;
    while (std::find(taken.begin(), taken.end(), id) != taken.end())
        ++id;
    return id;
}

/// A text without marks for the keyboard.
QString plain(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
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
    connect(unplugMenu_, &QMenu::aboutToShow, this, &BoardMenu::fillUnplugMenu);
    faultMenu_ = menu->addMenu(tr("&Fault"));
    addFaults();
    scenarioMenu_ = menu->addMenu(tr("&Scenario"));
    connect(scenarioMenu_, &QMenu::aboutToShow, this, &BoardMenu::markScenario);
    addScenarios();
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

void BoardMenu::addFaults()
{
    const QStringList faults = simulation_.faults();
    for (const QString &fault : faults)
        faultMenu_->addAction(plain(fault), this, [this, fault] { tell(simulation_.trigger(fault)); });
}

void BoardMenu::addScenarios()
{
    for (const Simulation::Scenario &scenario : simulation_.scenarios()) {
        QAction *action =
            scenarioMenu_->addAction(plain(scenario.name + QStringLiteral(": ") + scenario.title));
        action->setCheckable(true);
        action->setData(scenario.name);
        connect(action, &QAction::triggered, this,
                [this, name = scenario.name] { tell(simulation_.choose(name)); });
    }
}

void BoardMenu::markScenario()
{
    const QString current = simulation_.currentScenario();
    const QList<QAction *> actions = scenarioMenu_->actions();
    for (QAction *action : actions)
        action->setChecked(action->data().toString() == current);
}

void BoardMenu::tell(const QString &error)
{
    window_.statusBar()->showMessage(error, messageMs);
}
