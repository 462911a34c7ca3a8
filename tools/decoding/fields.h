#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "recordreader.h"

namespace reports {
struct Layout;
}

/// The fields of a packet under the names that docs/capture-format.md gives, for the tables and lines that
/// are printed here and for the dissector alike.
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
    std::string label;
    std::vector<std::pair<std::int64_t, std::string>> names = {}; ///< of values
    std::string unit = {};
};

/// A number at the beginning of a payload. Those of one kind lie one behind the other.
struct PayloadField
{
    capture::Kind kind;
    const char *name;
    FieldType type;
    unsigned bits;
    const char *unit = "";
    const char *valueNames[4] = {}; ///< of 1 to 4
};

inline constexpr PayloadField payloadFields[] = {
    {capture::Kind::Status, "status.monotonic", FieldType::Unsigned, 64, "ns"},
    {capture::Kind::Status, "status.real", FieldType::Unsigned, 64, "ns"},
    {capture::Kind::Status, "status.boot", FieldType::Unsigned, 64, "ns"},
    {capture::Kind::Status, "status.localOffset", FieldType::Signed, 32, "s"},
    {capture::Kind::Board, "change.state", FieldType::Unsigned, 32, "", {"seen", "gone"}},
    {capture::Kind::Board, "change.index", FieldType::Signed, 32},
    {capture::Kind::End, "end.reason", FieldType::Unsigned, 32, "", {"exit", "signal", "unknown", "slice"}},
    {capture::Kind::End, "end.value", FieldType::Signed, 32},
};

/// "penIdentity" of the layout "pen-identity": what the names of its fields begin with.
std::string prefixOf(const reports::Layout &layout);

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
