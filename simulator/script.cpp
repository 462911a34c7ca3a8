#include "simulator/script.h"

#include <algorithm>
#include <utility>

namespace {

std::chrono::nanoseconds periodOf(int rate)
{
    return std::chrono::nanoseconds(std::chrono::seconds(1)) / rate;
}

} // namespace

Script::Script(BoardPlan plan)
    : events(plan.events)
    , plannedRate(plan.rate)
    , period(periodOf(plan.rate))
    , stream(std::move(plan))
{
}

Script::Step Script::next()
{
    if (!stream.streaming())
        return stopped();
    while (!events.empty() && events.front().at <= stream.time()) {
        perform(events.front());
        events.erase(events.begin());
    }
    if (pause.count() > 0) {
        stream.skip(pause);
        return {std::nullopt, std::exchange(pause, {})};
    }
    if (!out.empty()) {
        const Report report = std::move(out.front());
        out.pop_front();
        return {report};
    }
    if (vanishing)
        return vanish();
    return bursts.empty() || stream.answerDue() ? regular() : burst();
}

/// Time goes on for an answer and nothing else.
Script::Step Script::stopped()
{
    if (stream.answerDue())
        return {stream.next({})};
    const auto wait = stream.untilAnswer();
    stream.skip(wait);
    return {std::nullopt, wait};
}

Script::Step Script::regular()
{
    const auto before = stream.time();
    const Report report = stream.next(period);
    return {report, stream.time() - before}; // an answer takes no time
}

void Script::add(BoardEvent event)
{
    event.at += stream.time();
    const auto later = [](const BoardEvent &a, const BoardEvent &b) { return a.at < b.at; };
    events.insert(std::upper_bound(events.begin(), events.end(), event, later), std::move(event));
}

void Script::perform(const BoardEvent &event)
{
    switch (event.what) {
    case BoardEvent::What::Burst:
        bursts.push_back({event.amount, event.kind});
        break;
    case BoardEvent::What::Pause:
        pause += event.duration;
        break;
    case BoardEvent::What::Raw:
        out.push_back(event.bytes);
        break;
    case BoardEvent::What::Rate:
        period = periodOf(event.amount ? event.amount : plannedRate);
        break;
    case BoardEvent::What::Vanish:
        vanishing = true;
        break;
    }
}

Script::Step Script::burst()
{
    Burst &burst = bursts.front();
    const Report report = burst.kind ? stream.ofKind(*burst.kind) : stream.next({});
    if (--burst.left == 0)
        bursts.pop_front();
    return {report};
}

Script::Step Script::vanish()
{
    Report report = stream.ofKind(Kind::Signal1);
    report.resize(report.size() / 2);
    return {report, {}, true};
}
