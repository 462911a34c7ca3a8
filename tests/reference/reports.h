#pragma once

#include <QByteArray>
#include <QVector>

/// Reports of every kind that the views tell apart, with lengths that fit and lengths that don't. Each
/// differs from the one before it, and the same number gives the same reports. \param round 0 and up; every
/// round has other values
QVector<QByteArray> reportsOfEveryKind(int round);
