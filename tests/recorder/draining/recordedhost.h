#pragma once

#include <QString>

/// The program that is recorded, and its first step in most tests.
inline const QString host = RECORDED_HOST;
inline constexpr char byName[] = "load=liborvexboardex.so.1";
