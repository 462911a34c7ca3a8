#include "rates.h"

#include <algorithm>
#include <cmath>

namespace plots {

namespace {

constexpr double longSpanSeconds = 10;
constexpr double shortIntervalSeconds = 0.1;
constexpr double minGapMs = 1e-6; ///< times are nanoseconds; two reports of one time would have no logarithm

} // namespace

Rates::Rates(Span shown, int columns)
    : span(shown)
    , intervalSeconds(shown.last - shown.first < longSpanSeconds ? shortIntervalSeconds : 1)
    , rates(shown, columns)
    , gaps(shown, columns)
{
}

/// The last interval may be cut by the end of the span. A small rest would tell a rate that nothing had.
void Rates::addRate(double interval, double count)
{
    const double begin = span.first + interval * intervalSeconds;
    const double length = std::min(intervalSeconds, span.last - begin);
    if (length >= intervalSeconds / 2)
        rates.add(begin + length / 2, count / length);
}

/// Of intervals without reports, the first and the last: all between them lie on the line.
void Rates::goTo(double interval)
{
    addRate(current, counted);
    counted = 0;
    if (interval > current + 1)
        addRate(current + 1, 0);
    if (interval > current + 2)
        addRate(interval - 1, 0);
    current = interval;
}

void Rates::add(double seconds)
{
    const double interval = std::floor((seconds - span.first) / intervalSeconds);
    if (interval > current)
        goTo(interval);
    ++counted;
    if (lastSeconds)
        gaps.add(seconds, std::max((seconds - *lastSeconds) * 1000, minGapMs));
    lastSeconds = seconds;
}

void Rates::finish()
{
    goTo(std::ceil((span.last - span.first) / intervalSeconds));
}

} // namespace plots
