#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "recordreader.h"

/// The fields of a packet under the names that docs/capture-format.md gives.
namespace decoding {

enum class FieldType : std::uint8_t
{
    Signed,
    Unsigned,
    Hexadecimal, ///< printed as "0x0000002a"
    Decimal,     ///< a number with a fraction
    Text,
    Bytes, ///< printed as hexadecimal digits
};

struct FieldInfo
{
    std::string name; ///< "sequence", "signal1.xFine0", "call.device"
    FieldType type;
    unsigned bits; ///< of a number
};

/// All fields there are, each name once, in the order in which the tables have them.
const std::vector<FieldInfo> &allFields();

struct FieldValue
{
    std::size_t index = 0; ///< in allFields()
    std::int64_t number = 0;
    double decimal = 0;
    std::string text; ///< of a text, or the bytes
};

/// The fields that a packet has, in the order of allFields().
void fieldsOf(const capture::Record &record, std::vector<FieldValue> &values);

/// As Wireshark prints it.
void appendPrinted(std::string &line, const FieldValue &value);

} // namespace decoding
