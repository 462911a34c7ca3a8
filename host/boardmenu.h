#pragma once

#include <QObject>

#include "simulation.h"

class HostWindow;
class QMenu;

/// The menu "Board" of the host's window: plugs simulated boards in and out, triggers faults, and changes the
/// scenario. The status bar says what has happened.
class BoardMenu : public QObject
{
    Q_OBJECT

public:
    /// The window owns this and must have been built.
    BoardMenu(HostWindow &window, const Simulation &simulation);

signals:
    /// A scenario has begun.
    void scenarioChanged();

private:
    void plug();
    void fillUnplugMenu();
    void tell(const QString &message);

    HostWindow &window_;
    const Simulation simulation_;
    QMenu *unplugMenu_ = nullptr;
};
