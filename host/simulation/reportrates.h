#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>

#include "simulation.h"

/// Shows, once a second, how many reports a second the simulated boards send and how many are delivered to
/// the tool.
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
