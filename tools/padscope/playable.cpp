#include "playable.h"

#include <cmath>

#include "capturefiles.h"
#include "replay.h"

namespace padscope {

namespace {

std::chrono::nanoseconds nanoseconds(double seconds)
{
    return std::chrono::nanoseconds(std::llround(seconds * 1e9));
}

} // namespace

bool isPlayable(const std::string &path, const Replay &replay)
{
    ReplayPlan plan;
    plan.capture = replay.capture;
    plan.from = nanoseconds(replay.from);
    if (replay.to)
        plan.to = nanoseconds(*replay.to);
    plan.session = replay.session;
    std::string error;
    if (!readReplay(plan, error))
        printError(path + ": " + error);
    return error.empty();
}

} // namespace padscope
