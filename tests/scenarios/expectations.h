#pragma once

#include <QString>
#include <vector>

/// What the bar graph shows of a scenario.
enum class Picture
{
    Still, ///< as before the first report
    Bars,
    Meter,
    Any,
};

/// What the tool makes of a scenario.
struct Expectation
{
    const char *scenario;
    const char *labelAtFirst;
    const char *labelInTheEnd; ///< before the tool is closed
    /// A regular expression for a row of the Monitor; null for none.
    const char *row;
    Picture picture;
    /// The boards that are told when the tool closes.
    std::vector<int> boardsInTheEnd;
    /// Typed before rows are waited for, and undone by "B" after that; null for nothing.
    const char *command = nullptr;
    /// How often the tool has attached in the end, at least.
    int attaches = 1;
    /// Rows of the Monitor as they stand there, whole, for which is waited one after the other.
    std::vector<const char *> wholeRows = {};
};

const std::vector<Expectation> &expectations();
