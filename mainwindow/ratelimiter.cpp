#include "ratelimiter.h"

namespace ratelimiter {

namespace {

QTime lastKeptTime;

// Each access has a function of its own that is never inlined, so that a thread sanitizer can be told of
// these and of nothing else.

[[gnu::noinline]] QTime lastKept()
{
    return lastKeptTime;
}

[[gnu::noinline]] void setLastKept(QTime time)
{
    lastKeptTime = time;
}

} // namespace

bool comesTooSoon(int thresholdMs)
{
    // A null time is 0 ms from any other.
    return lastKept().msecsTo(QTime::currentTime()) <= thresholdMs;
}

void restart(QTime keptTime)
{
    setLastKept(keptTime);
    const QTime now = QTime::currentTime();
    // The clock went back, as it does at midnight.
    if (keptTime.msecsTo(now) < 0)
        setLastKept(now);
}

} // namespace ratelimiter
