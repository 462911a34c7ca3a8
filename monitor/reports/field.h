#pragma once

#include <cstddef>
#include <cstdint>

/// Reading and writing of the fields of a report. All indices count from the report's first byte.
namespace reports {

enum class Width : std::uint8_t
{
    One = 1,
    Two = 2,
    Four = 4,
};

enum Sign : std::uint8_t
{
    Unsigned,
    Signed,
};

enum ByteOrder : std::uint8_t
{
    LittleEndian,
    BigEndian,
};

/// Marks a value's name for the translators, in the context of the view that translates it.
#define VALUE_NAME(context, text) text

/// A value's name in English. Views translate it.
struct NamedValue
{
    std::int64_t value;
    const char *name;
};

/// Names for values; any other value is shown as `otherwise` with the value for "%1".
struct ValueNames
{
    const NamedValue *names;
    std::size_t count;
    const char *otherwise;
};

/// Turns a value into a quantity: value * factor / divisor, shown with four significant digits.
struct Scale
{
    double factor;
    double divisor;
    const char *unit;

    constexpr double of(std::int64_t value) const { return static_cast<double>(value) * factor / divisor; }
};

struct Field
{
    const char *name;
    const char *label;
    std::uint8_t offset; ///< index of the first byte
    Width width;
    Sign sign;
    ByteOrder order = LittleEndian;
    std::uint32_t mask = 0xFFFFFFFF; ///< bits of the value that are used
    const ValueNames *names = nullptr;
    const Scale *scale = nullptr;
};

/// A report's bytes as they came. A byte that is not there reads as zero.
struct Bytes
{
    const unsigned char *data;
    std::size_t length;

    constexpr std::uint8_t at(std::size_t index) const
    {
        return index < length ? data[index] : std::uint8_t{0};
    }
};

constexpr unsigned widthInBytes(const Field &field)
{
    return static_cast<unsigned>(field.width);
}

/// Index of the byte that holds bits 8 * significance and up of the field's value.
constexpr unsigned byteIndex(const Field &field, unsigned significance)
{
    return field.order == LittleEndian ? field.offset + significance
                                       : field.offset + widthInBytes(field) - 1 - significance;
}

/// Value of a field, sign-extended when the field is signed.
constexpr std::int64_t read(const Field &field, const Bytes &bytes)
{
    std::uint32_t raw = 0;
    for (unsigned i = 0; i < widthInBytes(field); ++i)
        raw |= std::uint32_t{bytes.at(byteIndex(field, i))} << (8 * i);
    raw &= field.mask;
    if (field.sign == Unsigned)
        return raw;
    const std::int64_t span = std::int64_t{1} << (8 * widthInBytes(field));
    return raw >= static_cast<std::uint64_t>(span / 2) ? raw - span : raw;
}

/// Puts the low bits of a value where read() finds them; bits outside the field's mask stay as they are.
/// \param data at least `field.offset` + width bytes
constexpr void write(const Field &field, std::int64_t value, unsigned char *data)
{
    for (unsigned i = 0; i < widthInBytes(field); ++i) {
        const auto mask = static_cast<std::uint8_t>(field.mask >> (8 * i));
        const auto bits = static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> (8 * i));
        unsigned char &byte = data[byteIndex(field, i)];
        byte = static_cast<unsigned char>((byte & ~mask) | (bits & mask));
    }
}

// The header of every report.

inline constexpr Field reportLength{"reportLength", "", 0, Width::One, Unsigned};
inline constexpr Field reportType{"reportType", "", 1, Width::One, Unsigned};
inline constexpr Field reportSubType{"reportSubType", "", 2, Width::One, Unsigned};

} // namespace reports
