#pragma once

#include <optional>

#include "columns.h"

namespace plots {

/// Reports of one type: how many come in a second, and how long it takes from one to the next.
class Rates
{
public:
    /// Reports are counted by the second, in less than ten seconds by the tenth.
    Rates(Span shown, int columns);

    void add(double seconds);
    /// To be called behind the last report.
    void finish();

    /// Reports a second.
    std::vector<Line> rateLines() const { return rates.lines(unbroken); }
    /// Milliseconds from the report before.
    std::vector<Line> gapLines() const { return gaps.lines(unbroken); }

private:
    void addRate(double interval, double count);
    void goTo(double interval);

    Span span;
    double intervalSeconds;
    double current = 0; ///< index of the interval in which reports are counted
    double counted = 0;
    std::optional<double> lastSeconds;
    Columns rates;
    Columns gaps;
};

} // namespace plots
