// Prints the dissector with its tables printed anew, from those that the program decodes with.

#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>

#include "decoding.h"
#include "fields.h"
#include "payloads.h"
#include "signatures.h"

namespace {

constexpr char firstLine[] = "-- tables: begin";
constexpr char lastLine[] = "-- tables: end";

/// A string of Lua.
std::string quoted(const std::string &text)
{
    std::string quotes = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            quotes += '\\';
        quotes += character;
    }
    return quotes + '"';
}

const char *nameOf(decoding::FieldType type)
{
    switch (type) {
    case decoding::FieldType::Signed:
        return "signed";
    case decoding::FieldType::Unsigned:
        return "unsigned";
    case decoding::FieldType::Hexadecimal:
        return "hexadecimal";
    case decoding::FieldType::Decimal:
        return "decimal";
    case decoding::FieldType::Text:
        return "text";
    case decoding::FieldType::Bytes:
        return "bytes";
    }
    return "";
}

const char *nameOf(signatures::Role role)
{
    using signatures::Role;
    switch (role) {
    case Role::Signed:
    case Role::OutSigned:
        return "signed";
    case Role::Listener:
        return "listener";
    case Role::Text:
    case Role::Buffer:
    case Role::OutBuffer:
        return "bytes";
    case Role::OutRecord:
        return "record";
    default:
        return "unsigned";
    }
}

void printFields()
{
    std::cout << "-- name, type, bits, label, then names of values and the unit\nlocal fieldList = {\n";
    for (const decoding::FieldInfo &field : decoding::allFields()) {
        std::cout << "    {" << quoted(field.name) << ", " << quoted(nameOf(field.type)) << ", " << field.bits
                  << ", " << quoted(field.label);
        if (!field.names.empty()) {
            std::cout << ", names = {";
            for (const auto &[value, name] : field.names)
                std::cout << '[' << value << "] = " << quoted(name) << ", ";
            std::cout << '}';
        }
        if (!field.unit.empty())
            std::cout << ", unit = " << quoted(field.unit);
        std::cout << "},\n";
    }
    std::cout << "}\n";
}

void printHeader()
{
    std::cout << "-- the header's fields, in the order of their bytes\nlocal headerFields = {";
#define PRINT(type, name) std::cout << quoted(#name) << ", ";
    CAPTURE_HEADER_FIELDS(PRINT)
#undef PRINT
    std::cout << "}\nlocal magic, version, headerSize, lostLink = " << capture::magic << ", "
              << unsigned{capture::version} << ", " << capture::headerSize << ", " << capture::lostLink
              << "\nlocal kinds = {";
#define PRINT(identifier, text, number) std::cout << #identifier << " = " << (number) << ", ";
    CAPTURE_KINDS(PRINT)
#undef PRINT
    std::cout << "}\n";
}

void printFlags()
{
    static constexpr std::pair<capture::Flag, const char *> flags[] = {
        {capture::BoardIsValid, "board is valid"}, {capture::ResultIsValid, "result is valid"},
        {capture::WithinCall, "within a call"},    {capture::PayloadCut, "payload cut"},
        {capture::PointerWasNull, "null pointer"}, {capture::NotRead, "size unknown, not read"},
        {capture::FromReplay, "from a replay"},    {capture::Edited, "edited"},
    };
    std::cout << "local flagNames = {";
    for (const auto &[flag, name] : flags)
        std::cout << '{' << unsigned{flag} << ", " << quoted(name) << "}, ";
    std::cout << "}\nlocal resultIsValid, withinCall = " << unsigned{capture::ResultIsValid} << ", "
              << unsigned{capture::WithinCall} << '\n';
}

/// As layouts.h has it.
std::string formatOf(const reports::RowText &text)
{
    std::string format;
    for (const reports::RowText::Part &part : text) {
        format.append(part.literal, part.literalLength);
        (format += '{') += part.field->name;
        if (part.width > 0)
            (format += ':') += std::to_string(part.width);
        format += '}';
    }
    return format + text.ending();
}

void printField(const reports::Field &field)
{
    std::cout << "        {name = " << quoted(field.name) << ", offset = " << unsigned{field.offset}
              << ", width = " << widthInBytes(field);
    if (field.sign == reports::Signed)
        std::cout << ", isSigned = true";
    if (field.order == reports::BigEndian)
        std::cout << ", isBigEndian = true";
    if (field.mask != 0xFFFFFFFF)
        std::cout << ", mask = " << field.mask;
    if (field.names)
        std::cout << ", otherwise = " << quoted(field.names->otherwise);
    if (field.scale)
        std::cout << ", factor = " << field.scale->factor << ", divisor = " << field.scale->divisor;
    std::cout << "},\n";
}

void printLayouts()
{
    std::cout << "local layouts = {\n";
    for (const reports::Layout *layout : reports::layouts) {
        std::cout << "    {prefix = " << quoted(decoding::prefixOf(*layout) + '.')
                  << ", report = " << quoted(layout->report) << ", type = " << unsigned{layout->type}
                  << ", subType = " << unsigned{layout->subType}
                  << ", sentLength = " << unsigned{layout->sentLength}
                  << ",\n     first = " << quoted(formatOf(layout->first))
                  << ",\n     second = " << quoted(formatOf(layout->second)) << ",\n     fields = {\n";
        for (std::size_t i = 0; i < layout->fieldCount; ++i)
            printField(layout->fields[i]);
        std::cout << "    }},\n";
    }
    std::cout << "}\n";
}

void printTypes()
{
    std::cout << "local reportTypes = {\n";
    for (const reports::TypeRule &rule : reports::typeRules)
        std::cout << "    [" << unsigned{rule.type} << "] = {name = " << quoted(rule.name)
                  << (rule.hasLengthRule ? ", hasLengthRule = true" : "") << "},\n";
    std::cout << "}\nlocal textReport, textOrAdcReport, adcSubType, textOffset = "
              << unsigned{reports::TextReport} << ", " << unsigned{reports::TextOrAdcReport} << ", "
              << unsigned{reports::adc.subType} << ", " << reports::textOffset << "\nlocal adcLengths = {";
    for (int length = 0; length < 256; ++length) {
        if (reports::isAdcLength(length))
            std::cout << '[' << length << "] = true, ";
    }
    std::cout << "}\n";
}

void printCalls()
{
    std::cout
        << "-- the entry points; of each its arguments in the call, then in the return\nlocal calls = {\n";
    for (unsigned call = 1; call <= signatures::callCount; ++call) {
        const signatures::Signature &signature = *signatures::signatureOf(call);
        std::cout << "    {name = " << quoted(signature.name);
        for (const bool isReturn : {false, true}) {
            std::cout << ", {";
            for (const signatures::Argument &argument : signature.arguments) {
                if (!isLeftOut(argument.role) && isFilledIn(argument.role) == isReturn)
                    std::cout << '{' << quoted(argument.name) << ", " << quoted(nameOf(argument.role))
                              << "}, ";
            }
            std::cout << '}';
        }
        std::cout << "},\n";
    }
    std::cout << "}\n";
}

void printPayloads()
{
    std::cout
        << "-- kind, name and bytes of the numbers that a payload begins with\nlocal payloadFields = {\n";
    for (const decoding::PayloadField &field : decoding::payloadFields)
        std::cout << "    {" << static_cast<unsigned>(field.kind) << ", " << quoted(field.name) << ", "
                  << field.bits / 8 << "},\n";
    std::cout << "}\n";
}

void printTables()
{
    printFields();
    printHeader();
    printFlags();
    printLayouts();
    printTypes();
    printCalls();
    printPayloads();
}

} // namespace

int main(int argc, char **argv)
{
    std::ifstream dissector(argc == 2 ? argv[1] : "");
    bool isInTables = false;
    bool hasTables = false;
    for (std::string line; std::getline(dissector, line);) {
        if (line == lastLine)
            isInTables = false;
        if (!isInTables)
            std::cout << line << '\n';
        if (line == firstLine) {
            isInTables = hasTables = true;
            printTables();
        }
    }
    if (!hasTables || isInTables)
        std::cerr << "writedissector: which dissector's tables?\n";
    return hasTables && !isInTables ? 0 : 1;
}
