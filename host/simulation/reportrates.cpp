#include "reportrates.h"

#include <algorithm>

namespace {

constexpr int intervalMs = 1000;

} // namespace

ReportRates::ReportRates(const Simulation &simulation)
    : simulation_(simulation)
    , last_(simulation.totals())
{
    setAccessibleDescription(tr("Reports of the simulated boards"));
    setText(tr("Reports a second: %1 sent, %2 delivered").arg(0).arg(0));
    connect(&timer_, &QTimer::timeout, this, &ReportRates::measure);
    clock_.start();
    timer_.start(intervalMs);
}

void ReportRates::measure()
{
    const Simulation::Totals now = simulation_.totals();
    // The timer is late while the tool is busy.
    const double seconds = static_cast<double>(std::max<qint64>(clock_.restart(), 1)) / 1000;
    const auto rate = [seconds](unsigned long long before, unsigned long long after) {
        return qRound64(static_cast<double>(after - before) / seconds);
    };
    setText(tr("Reports a second: %1 sent, %2 delivered")
                .arg(rate(last_.sent, now.sent))
                .arg(rate(last_.delivered, now.delivered)));
    last_ = now;
}
