#pragma once

#include <QMenu>

#include "simulation.h"

/// The faults that the simulator knows, each with a sentence that says what it does. A fault that lasts has a
/// tick box, checked while it is on.
class FaultMenu : public QMenu
{
    Q_OBJECT

public:
    FaultMenu(const Simulation &simulation, QWidget *parent);

signals:
    /// What has happened, or why nothing has.
    void told(const QString &message);

private:
    void addFault(const QString &fault);
    void trigger(const QString &fault);
    void tickWhatIsOn();

    const Simulation simulation_;
};
