#pragma once

#include <cstddef>
#include <cstdint>

#include "support/packets.h"

// What the fuzz targets share. A target defines LLVMFuzzerInitialize() and LLVMFuzzerTestOneInput(), which
// libFuzzer calls, or a replay of stored inputs.

namespace fuzz {

/// Starts Qt on the offscreen platform, with a new home folder that is removed at the end.
void startApplication();

/// Ends the process, with a core for the fuzzer, unless the condition holds.
void require(bool condition, const char *what);

/// Reads values off an input. When the input is used up every value is zero.
class Input
{
public:
    Input(const std::uint8_t *data, std::size_t size)
        : rest(data)
        , left(size)
    {
    }

    bool isEmpty() const { return left == 0; }
    std::uint8_t byte();
    /// At most `length` bytes.
    QByteArray bytes(std::size_t length);

private:
    const std::uint8_t *rest;
    std::size_t left;
};

} // namespace fuzz
