#include "replaytimes.h"

#include <algorithm>
#include <iterator>

#include "replay.h"

void ReplayTimes::cut()
{
    const auto indexOf = [this](std::chrono::nanoseconds time) {
        const auto isBefore = [](const ReplayEntry &entry, std::int64_t wanted) {
            return entry.timeNs < wanted;
        };
        const auto place =
            std::lower_bound(replay.entries.begin(), replay.entries.end(), time.count(), isBefore);
        return static_cast<std::size_t>(place - replay.entries.begin());
    };
    const auto isPlayed = [this](std::size_t index) {
        return replay.entries[index].kind != ReplayEntry::Nothing;
    };
    replay.first = indexOf(replay.plan.from);
    replay.end = replay.plan.to ? std::max(replay.first, indexOf(*replay.plan.to)) : replay.entries.size();
    while (replay.first < replay.end && !isPlayed(replay.first))
        ++replay.first;
    while (replay.first < replay.end && !isPlayed(replay.end - 1))
        --replay.end;
    findEnds();
    replay.reports = static_cast<std::uint64_t>(
        std::count_if(replay.entries.begin() + static_cast<std::ptrdiff_t>(replay.first),
                      replay.entries.begin() + static_cast<std::ptrdiff_t>(replay.end),
                      [](const ReplayEntry &entry) { return entry.kind == ReplayEntry::Report; }));
}

void ReplayTimes::findEnds()
{
    const auto begin = replay.entries.begin();
    const auto first = begin + static_cast<std::ptrdiff_t>(replay.first);
    const auto end = begin + static_cast<std::ptrdiff_t>(replay.end);
    const auto isHeard = [](const ReplayEntry &entry) {
        return entry.kind == ReplayEntry::Report || entry.kind == ReplayEntry::Notification;
    };
    const auto firstOne = std::find_if(first, end, isHeard);
    const auto behindLast =
        std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(firstOne), isHeard).base();
    firstHeard = static_cast<std::size_t>(firstOne - begin);
    endHeard = static_cast<std::size_t>(behindLast - begin);
    isFirstOfAll = std::none_of(begin, first, isHeard);
}

/// Whether the clock will not start at the attach.
bool ReplayTimes::isAwaited() const
{
    const auto present = replay.boards.at(0);
    return std::any_of(present.begin(), present.end(), [this](const BoardHistory::Present &one) {
        return one.isListed && replay.listened.count(one.board->id) > 0;
    });
}

/// The clock starts when the last callback of the start is registered, or without any at the attach; where
/// the capture tells when that was, the first entry keeps its distance from it.
std::int64_t ReplayTimes::beginNs() const
{
    if (firstHeard == endHeard)
        return replay.plan.from.count();
    const std::int64_t known =
        start.registrationNs < 0 && !isAwaited() ? start.attachNs : start.registrationNs;
    const bool isKnown = known >= replay.plan.from.count() && isFirstOfAll;
    return isKnown ? known : replay.entries[firstHeard].timeNs;
}

/// A pause ends with a report; what else happened in it is no end.
void ReplayTimes::shortenGaps(std::int64_t begin)
{
    if (!replay.plan.skipGaps)
        return;
    const std::int64_t max = replay.plan.skipGaps->count();
    std::int64_t before = begin;
    for (std::size_t i = replay.first; i < endHeard; ++i) {
        const ReplayEntry &entry = replay.entries[i];
        if (entry.kind != ReplayEntry::Report && i + 1 < endHeard)
            continue;
        const std::int64_t excess = entry.timeNs - before - max;
        if (excess > 0) {
            leftOut.push_back({before + max, entry.timeNs, replay.gapsNs});
            ++replay.gaps;
            replay.gapsNs += excess;
        }
        before = entry.timeNs;
    }
}

/// Where nothing is left out, time goes on as it was recorded.
std::int64_t ReplayTimes::playedNs(std::int64_t recordedNs) const
{
    const auto isBehind = [](std::int64_t wanted, const LeftOut &pause) { return wanted < pause.begin; };
    const auto behind = std::upper_bound(leftOut.begin(), leftOut.end(), recordedNs, isBehind);
    if (behind == leftOut.begin())
        return recordedNs;
    const LeftOut &pause = *(behind - 1);
    return recordedNs - pause.before - (std::min(recordedNs, pause.end) - pause.begin);
}

void ReplayTimes::set()
{
    const std::int64_t begin = beginNs();
    shortenGaps(begin);
    if (firstHeard < endHeard)
        replay.lengthNs = playedNs(replay.entries[endHeard - 1].timeNs) - begin;
    for (std::size_t i = replay.first; i < replay.end; ++i) {
        const std::int64_t played = playedNs(replay.entries[i].timeNs) - begin;
        replay.entries[i].timeNs = std::clamp<std::int64_t>(played, 0, replay.lengthNs);
    }
    replay.answers.finish([&](std::int64_t recordedNs) { return playedNs(recordedNs) - begin; });
}
