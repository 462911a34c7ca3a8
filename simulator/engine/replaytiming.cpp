#include "replaytiming.h"

#include <algorithm>

void ReplayTiming::played(std::int64_t positionNs, Steady::time_point now)
{
    last = {positionNs, now};
    if (!begin)
        begin = last;
}

void ReplayTiming::interrupt()
{
    if (begin) {
        capturedNs += static_cast<double>(last.positionNs - begin->positionNs);
        tookNs += static_cast<double>((last.time - begin->time).count());
    }
    begin.reset();
}

void ReplayTiming::beginRate()
{
    begin.reset();
    capturedNs = 0;
    tookNs = 0;
}

double ReplayTiming::achievedRate() const
{
    const double captured = begin ? static_cast<double>(last.positionNs - begin->positionNs) : 0;
    const double took = begin ? static_cast<double>((last.time - begin->time).count()) : 0;
    return tookNs + took > 0 ? (capturedNs + captured) / (tookNs + took) : 0;
}

// Bins grow with the error: the first ones have 1 ns each, then each octave has `stepsPerOctave`.

std::size_t ReplayTiming::binOf(std::uint64_t ns)
{
    unsigned octave = 0;
    while (ns >= std::uint64_t{2} * stepsPerOctave) {
        ns /= 2;
        ++octave;
    }
    return std::min<std::size_t>(octave * stepsPerOctave + ns, octaves * stepsPerOctave - 1);
}

std::uint64_t ReplayTiming::maxOf(std::size_t bin)
{
    const std::size_t octave = bin < 2 * stepsPerOctave ? 0 : bin / stepsPerOctave - 1;
    const std::uint64_t step = bin - octave * stepsPerOctave;
    return ((step + 1) << octave) - 1;
}

void ReplayTiming::addError(std::chrono::nanoseconds error)
{
    error = std::max(error, std::chrono::nanoseconds::zero());
    ++bins[binOf(static_cast<std::uint64_t>(error.count()))];
    ++count;
    max = std::max(max, error);
}

std::chrono::nanoseconds ReplayTiming::errorOf(unsigned perMille) const
{
    const std::uint64_t wanted = (count * perMille + 999) / 1000;
    std::uint64_t passed = 0;
    for (std::size_t bin = 0; bin < bins.size(); ++bin) {
        passed += bins[bin];
        if (passed >= wanted)
            return std::min(max, std::chrono::nanoseconds(maxOf(bin)));
    }
    return max;
}
