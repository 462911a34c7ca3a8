#include "findings.h"

#include <algorithm>

#include "lines.h"

namespace comparing {

namespace {

using decoding::FieldType;
using decoding::FieldValue;

constexpr char none[] = "none"; ///< in place of the value of a field that is cut off

std::string_view shortName(std::size_t field)
{
    const std::string_view name = decoding::allFields()[field].name;
    const std::size_t dot = name.find('.');
    return dot == std::string_view::npos ? name : name.substr(dot + 1);
}

std::string printed(const FieldValue &value)
{
    std::string shown;
    decoding::appendPrinted(shown, value);
    if (decoding::allFields()[value.index].type != FieldType::Text)
        return shown;
    for (std::size_t at = shown.find('"'); at != std::string::npos; at = shown.find('"', at + 2))
        shown.insert(at, 1, '\\');
    return '"' + shown + '"';
}

} // namespace

void Findings::compareField(std::size_t field, const FieldValue &valueA, const FieldValue &valueB, bool isInA,
                            bool isInB)
{
    const FieldType type = decoding::allFields()[field].type;
    const bool isDecimal = type == FieldType::Decimal;
    if (isInA && isInB && valueA.number == valueB.number && valueA.text == valueB.text)
        return;
    anyField = true;
    if (rules.isIgnored(field))
        return;
    const std::string name(shortName(field));
    if (isInA && isInB) {
        const auto number = [isDecimal](const FieldValue &value) {
            return isDecimal ? value.decimal : static_cast<double>(value.number);
        };
        if (type == FieldType::Bytes) {
            if (valueA.text.size() != valueB.text.size())
                add(name + " length", std::to_string(valueA.text.size()), std::to_string(valueB.text.size()));
            compareBytes(name + " byte ", valueA.text, valueB.text);
            return;
        }
        if (type != FieldType::Text && rules.areEqual(field, number(valueA), number(valueB)))
            return;
    }
    add(name, isInA ? printed(valueA) : none, isInB ? printed(valueB) : none);
}

void Findings::compareBytes(const std::string &name, std::string_view bytesA, std::string_view bytesB)
{
    for (std::size_t i = 0; i < std::min(bytesA.size(), bytesB.size()) && !isDone(); ++i) {
        if (bytesA[i] != bytesB[i])
            addByte(name, i, static_cast<unsigned char>(bytesA[i]), static_cast<unsigned char>(bytesB[i]));
    }
}

void Findings::addByte(std::string_view name, std::size_t offset, int from, int to)
{
    addBytes(std::string(name) + std::to_string(offset), from, to);
}

void Findings::addBytes(std::string_view name, int from, int to)
{
    constexpr char digits[] = "0123456789abcdef";
    const auto hex = [&digits](int byte) { return std::string{digits[byte >> 4 & 15], digits[byte & 15]}; };
    add(name, hex(from), hex(to));
}

void Findings::add(std::string_view name, const std::string &from, const std::string &to)
{
    isFound = true;
    if (!text)
        return;
    if (!text->empty())
        *text += ", ";
    ((((*text += name) += ' ') += from) += " -> ") += to;
}

} // namespace comparing
