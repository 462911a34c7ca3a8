#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <endian.h>
#include <string>
#include <string_view>
#include <type_traits>

/// Bytes of captures: views of them, and integers in them.
namespace capture {

enum class ByteOrder : std::uint8_t
{
    Little,
    Big,
};

/// Bytes that somebody else owns.
struct ByteView
{
    const unsigned char *data = nullptr;
    std::size_t size = 0;

    /// What lies behind the first `count` bytes; empty when there are no more.
    constexpr ByteView from(std::size_t count) const
    {
        return count < size ? ByteView{data + count, size - count} : ByteView{};
    }
    constexpr ByteView first(std::size_t count) const { return {data, count < size ? count : size}; }

    std::string_view text() const { return {reinterpret_cast<const char *>(data), size}; }
};

/// The integer at an index. A byte that is not there reads as zero.
template <typename Integer>
Integer integerAt(ByteView bytes, std::size_t index, ByteOrder order = ByteOrder::Little)
{
    std::make_unsigned_t<Integer> value = 0;
    if (index < bytes.size && bytes.size - index >= sizeof value)
        std::memcpy(&value, bytes.data + index, sizeof value); // a single load
    else if (index < bytes.size)
        std::memcpy(&value, bytes.data + index, bytes.size - index);
    constexpr int bits = 8 * sizeof value;
    if constexpr (bits == 16)
        value = order == ByteOrder::Little ? le16toh(value) : be16toh(value);
    else if constexpr (bits == 32)
        value = order == ByteOrder::Little ? le32toh(value) : be32toh(value);
    else if constexpr (bits == 64)
        value = order == ByteOrder::Little ? le64toh(value) : be64toh(value);
    return static_cast<Integer>(value);
}

/// Appends an integer, little-endian.
template <typename Integer>
void append(std::string &bytes, Integer value)
{
    const auto unsignedValue = static_cast<std::uint64_t>(value);
    for (std::size_t i = 0; i < sizeof(Integer); ++i)
        bytes += static_cast<char>(static_cast<unsigned char>(unsignedValue >> (8 * i)));
}

inline ByteView viewOf(std::string_view bytes)
{
    return {reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size()};
}

/// Rounds up to the next multiple of four, to which pcapng pads everything.
constexpr std::size_t padded(std::size_t size)
{
    return (size + 3) & ~std::size_t{3};
}

} // namespace capture
