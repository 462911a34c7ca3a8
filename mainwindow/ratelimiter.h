#pragma once

#include <QTime>

/// Rate limit: at most one report passes per interval, by one clock for the whole process.
///
/// Called on the driver's threads without a lock, on purpose: a stale value keeps or drops one report more.
namespace ratelimiter {

/// Whether a report that arrives now is too soon after the one that last restarted the clock. Always true
/// before the first restart.
/// \param thresholdMs a report that arrives exactly this long after the last one is still too soon
bool comesTooSoon(int thresholdMs);

/// Restarts the clock when a report is kept.
void restart(QTime keptTime);

} // namespace ratelimiter
