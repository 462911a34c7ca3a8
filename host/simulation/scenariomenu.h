#pragma once

#include <QMenu>

#include "simulation.h"

class QActionGroup;

/// The scenarios that are shipped with the simulator, and the last one from a file of the user. The menu's
/// title names the one in force.
class ScenarioMenu : public QMenu
{
    Q_OBJECT

public:
    /// \param parent also of the dialogs
    ScenarioMenu(const Simulation &simulation, QWidget *parent);

signals:
    /// A scenario has begun.
    void told(const QString &message);

private:
    QAction *addScenario(const QString &scenario, const QString &caption);
    void openFile();
    void choose(const QString &scenario);
    /// Gives a file of the user the action ownFile_.
    QAction *actionOf(const QString &scenario);
    void markCurrent();
    void showError(const QString &error);

    const Simulation simulation_;
    QActionGroup *scenarios_;
    /// The last one from a file of the user; hidden while there is none.
    QAction *ownFile_;
};
