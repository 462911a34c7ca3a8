#pragma once

#include "support/packets.h"

// What the fuzz targets share. libFuzzer, or a replay of stored inputs, starts Qt on the offscreen platform
// with a new home folder.

namespace fuzz {

/// Each target defines it. Called with each input, which lies in a buffer of its own size.
void run(const QByteArray &bytes);

/// Ends the process, with a core for the fuzzer, unless the condition holds.
void require(bool condition, const char *what);

/// Writes a file with its folder.
void write(const QString &path, const QByteArray &bytes);

/// Reads values off an input. When the input is used up every value is zero.
struct Input
{
    bool isEmpty() const { return rest.isEmpty(); }
    int byte() { return static_cast<unsigned char>(bytes(1).append('\0').at(0)); }
    /// At most `length` bytes.
    QByteArray bytes(int length);

    QByteArray rest;
};

} // namespace fuzz
