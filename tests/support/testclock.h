#pragma once

#include <QTime>
#include <QVector>

/// The time of day as the code under test sees it, in a program that links testclock.cpp.
namespace testclock {

/// The clock stands still at this time.
void stopAt(QTime time);

/// The next readings, one each; after the last one the clock stands still at it.
void willRead(const QVector<QTime> &times);

} // namespace testclock
