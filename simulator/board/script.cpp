#include "script.h"

#include <algorithm>
#include <utility>

Script::Script(BoardPlan plan_)
    : plan(std::move(plan_))
    , stream(plan)
{
    happen(Rate{0});
    for (std::size_t i = 0; i < *plan.happened; ++i) {
        if (const auto *rate = std::get_if<Rate>(&plan.events[i].what))
            happen(*rate);
    }
}

Script::Step Script::next()
{
    if (!stream.streaming())
        return stopped();
    performDue();
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
    if (!bursts.empty() && !stream.answerDue())
        return burst();
    const auto before = stream.time();
    const Report report = stream.next(period);
    return {report, stream.time() - before}; // an answer takes no time
}

void Script::performDue()
{
    // A board that was unplugged from within a callback may still be at its last step when it is back.
    std::size_t next = *plan.happened;
    while (next < plan.events.size() && plan.events[next].at <= stream.time()) {
        if (plan.happened->compare_exchange_strong(next, next + 1))
            perform(plan.events[next++]);
    }
    for (; !added.empty() && added.front().at <= stream.time(); added.erase(added.begin()))
        perform(added.front());
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

void Script::add(BoardEvent event)
{
    event.at += stream.time();
    const auto later = [](const BoardEvent &a, const BoardEvent &b) { return a.at < b.at; };
    added.insert(std::upper_bound(added.begin(), added.end(), event, later), std::move(event));
}

void Script::perform(const BoardEvent &event)
{
    std::visit([this](const auto &what) { happen(what); }, event.what);
}

void Script::happen(const Rate &rate)
{
    period =
        std::chrono::nanoseconds(std::chrono::seconds(1)) / (rate.perSecond ? rate.perSecond : plan.rate);
}

Script::Step Script::burst()
{
    Burst &burst = bursts.front();
    const Report report = burst.kind ? stream.ofKind(*burst.kind) : stream.next({});
    if (--burst.reports == 0)
        bursts.pop_front();
    return {report};
}

Script::Step Script::vanish()
{
    Report report = stream.ofKind(Kind::Signal1);
    report.resize(report.size() / 2);
    return {report, {}, true};
}
