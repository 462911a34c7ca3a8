#pragma once

#include <QTime>

/// Lets through at most one report in a time, with one clock for the whole process.
///
/// Called by the driver's threads without a lock, on purpose: a stale value keeps or drops one report more.
namespace ratelimiter {

/// Whether a report that arrives now comes too soon after the one that last restarted the clock. Before the
/// first restart every report does.
/// \param thresholdMs shortest time between two reports, exclusive
bool comesTooSoon(int thresholdMs);

/// Restarts the clock with a report that was kept.
void restart(QTime keptTime);

} // namespace ratelimiter
