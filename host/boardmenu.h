#pragma once

#include "simulation.h"

#include <QObject>

class HostWindow;
class QMenu;

/// The menu "Board" of the host's window: plugs simulated boards in and out, makes faults happen, and changes
/// the scenario. What happens is told in the status bar.
class BoardMenu : public QObject
{
    Q_OBJECT

public:
    /// The window owns this and must have been built.
    BoardMenu(HostWindow &window, const Simulation &simulation);

private:
    void plug();
    void fillUnplugMenu();
    void tell(const QString &message);

    HostWindow &window_;
    const Simulation simulation_;
    QMenu *unplugMenu_ = nullptr;
};
