#pragma once

#include "bargraph/display.h"

/// A line of 74 characters: twelve words, the proximity behind the first line feed, the frequency at 67.
inline const char *const goodLine =
    "0001 0002 0003 0004 0005 0006*0007 0008 0009 000A 000b 000C\r\nO     0010\r\n!";
inline const QVector<int> goodSignals{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};

/// A text report whose length byte says nothing.
inline QByteArray text(const QByteArray &characters)
{
    return "\x28\x32" + characters;
}

/// The good line with other characters from an index on.
inline QByteArray lineWith(int index, const QByteArray &characters)
{
    return QByteArray(goodLine).replace(index, characters.size(), characters);
}
