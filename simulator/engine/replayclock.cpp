#include "replayclock.h"

#include <algorithm>

namespace {

constexpr double maxDistanceNs = 1e18; // 31 years, which a time of the steady clock still holds

std::chrono::nanoseconds scaled(std::int64_t ns, double factor)
{
    const double product = static_cast<double>(ns) * factor;
    return std::chrono::nanoseconds(
        static_cast<std::int64_t>(std::clamp(product, -maxDistanceNs, maxDistanceNs)));
}

} // namespace

std::int64_t ReplayClock::positionAt(Steady::time_point now) const
{
    return pair ? pair->positionNs + scaled((now - pair->time).count(), perSecond).count() : position;
}

ReplayClock::Steady::time_point ReplayClock::dueTime(std::int64_t positionNs) const
{
    return pair->time + scaled(positionNs - pair->positionNs, 1 / perSecond);
}
