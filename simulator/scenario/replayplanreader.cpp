#include "replayplanreader.h"

#include <cmath>
#include <filesystem>

namespace {

double rateOf(const Json &node)
{
    if (node.is_string() && text(node) == "max")
        return unlimitedReplayRate;
    if (!node.is_number())
        reject(node, "this rate is not known; allowed are a number from 0.1 to 100.0 and max");
    return number(node, minReplayRate, maxReplayRate);
}

unsigned roundsOf(const Json &node)
{
    if (node.is_string() && text(node) == "forever")
        return 0;
    if (!node.is_number())
        reject(node, "this is not known; allowed are a whole number from 1 to 1000000 and forever");
    return static_cast<unsigned>(integer(node, 1, maxReplayRounds));
}

std::uint32_t sessionOf(const Json &node)
{
    const std::string digits = text(node);
    if (digits.size() != 8 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        reject(node, "this is no session; allowed are eight hexadecimal digits");
    return static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
}

std::chrono::nanoseconds secondsOf(const Json &node)
{
    return std::chrono::nanoseconds(std::llround(number(node, 0, maxReplaySeconds) * 1e9));
}

/// `null` is the same as no key.
template <typename Value, typename Read>
void takeUnlessNull(const Json &object, const char *key, Value &value, Read read)
{
    const Json *found = find(object, key);
    if (found && !found->is_null())
        value = read(*found);
}

} // namespace

std::shared_ptr<const Replay> replayOf(const Json &node, const std::string &folder)
{
    allowKeys(node, {"capture", "rate", "loop", "from", "to", "skipGaps", "paused", "lockstep", "session"});
    ReplayPlan plan;
    const Json &capture = need(node, "capture");
    plan.capture = (std::filesystem::path(folder) / text(capture)).string();
    takeUnlessNull(node, "rate", plan.rate, rateOf);
    takeUnlessNull(node, "loop", plan.rounds, roundsOf);
    takeUnlessNull(node, "from", plan.from, secondsOf);
    takeUnlessNull(node, "to", plan.to, secondsOf);
    takeUnlessNull(node, "skipGaps", plan.skipGaps, secondsOf);
    takeUnlessNull(node, "paused", plan.paused, boolean);
    takeUnlessNull(node, "lockstep", plan.lockstep, boolean);
    takeUnlessNull(node, "session", plan.session, sessionOf);
    if (plan.to && *plan.to <= plan.from)
        reject(need(node, "to"), "this is not later than \"from\"; allowed are later times");
    std::string error;
    auto replay = readReplay(plan, error);
    if (!replay)
        reject(capture, plan.capture + ": " + error);
    return replay;
}
