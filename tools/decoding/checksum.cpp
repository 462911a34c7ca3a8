#include "checksum.h"

#include <array>

namespace decoding {

namespace {

constexpr unsigned polynomial = 0x8408; // x^16 + x^12 + x^5 + 1, lowest bit first

constexpr std::array<std::uint16_t, 256> newTable()
{
    std::array<std::uint16_t, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        unsigned rest = byte;
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest & 1U) != 0 ? (rest >> 1) ^ polynomial : rest >> 1;
        table[byte] = static_cast<std::uint16_t>(rest);
    }
    return table;
}

constexpr std::array<std::uint16_t, 256> table = newTable();

} // namespace

std::uint16_t checksumOf(capture::ByteView bytes)
{
    unsigned rest = 0xFFFF;
    for (std::size_t i = 0; i < bytes.size; ++i)
        rest = (rest >> 8) ^ table[(rest ^ bytes.data[i]) & 0xFFU];
    return static_cast<std::uint16_t>(~rest);
}

} // namespace decoding
