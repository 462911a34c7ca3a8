#pragma once

#include "simulation.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>

/// Tells, once a second, how many reports the simulated boards sent in the last one and how many of them the
/// tool has taken.
class ReportRates : public QLabel
{
    Q_OBJECT

public:
    explicit ReportRates(const Simulation &simulation);

private:
    void measure();

    const Simulation simulation_;
    Simulation::Totals last_;
    QElapsedTimer clock_;
    QTimer timer_;
};
