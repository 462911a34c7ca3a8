#pragma once

#include <QString>

// Times and rates of a replay, as a user sees and changes them.

/// Minutes, seconds and milliseconds: "0:01.234".
QString replayTimeText(qint64 ns);

/// "0.5x", or "max" for 0, which is as fast as possible.
QString replayRateText(double rate);

// The next of 0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100 and 0; the last one stays.

double fasterReplayRate(double rate);
double slowerReplayRate(double rate);
