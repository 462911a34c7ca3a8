#include "ratelimiter.h"

namespace ratelimiter {

namespace {

QTime lastKeptTime;

// Each access is a function that is never inlined, so that the thread sanitizer's suppressions name these two
// and nothing else.

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
