#include "fields.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <type_traits>
#include <unordered_map>

#include "decoding.h"
#include "escaping.h"
#include "lines.h"
#include "signatures.h"

namespace decoding {

namespace {

constexpr char hexDigits[] = "0123456789abcdef";

/// Where the fields of each table begin in the list of all.
struct Index
{
    std::vector<FieldInfo> fields;
    std::unordered_map<const reports::Layout *, std::size_t> layouts;
    std::unordered_map<std::string, std::size_t> arguments;
    std::size_t characters = 0;
    std::size_t payloads = 0;
    std::size_t mark = 0;
};

/// "Header length" of "headerLength", "Report word 8" of "reportWord8".
std::string labelOf(const std::string &name)
{
    std::string label;
    for (const char character : name) {
        if (label.empty())
            label += static_cast<char>(std::toupper(character));
        else if (std::isupper(character) || (std::isdigit(character) && !std::isdigit(label.back())))
            (label += ' ') += static_cast<char>(std::tolower(character));
        else
            label += character;
    }
    return label;
}

template <typename Integer>
FieldInfo headerField(const std::string &name)
{
    const bool isHexadecimal = name == "magic" || name == "flags" || name == "session";
    const FieldType type = isHexadecimal               ? FieldType::Hexadecimal
                           : std::is_signed_v<Integer> ? FieldType::Signed
                                                       : FieldType::Unsigned;
    FieldInfo field{name, type, 8 * sizeof(Integer), labelOf(name)};
    if (name == "kind") {
#define ADD(identifier, text, number) field.names.emplace_back(number, text);
        CAPTURE_KINDS(ADD)
#undef ADD
    }
    if (name == "call") {
        field.names.emplace_back(0, "none");
        for (unsigned call = 1; call <= signatures::callCount; ++call)
            field.names.emplace_back(call, signatures::signatureOf(call)->name);
    }
    return field;
}

FieldInfo reportField(const reports::Layout &layout, const reports::Field &field)
{
    FieldInfo info{prefixOf(layout) + '.' + field.name,
                   field.sign == reports::Signed ? FieldType::Signed : FieldType::Unsigned,
                   8 * reports::widthInBytes(field), *field.label ? field.label : labelOf(field.name)};
    if (field.scale) {
        info.type = FieldType::Decimal;
        info.unit = field.scale->unit;
    }
    for (std::size_t i = 0; field.names && i < field.names->count; ++i)
        info.names.emplace_back(field.names->names[i].value, field.names->names[i].name);
    return info;
}

FieldType typeOf(signatures::Role role)
{
    switch (role) {
    case signatures::Role::Signed:
    case signatures::Role::OutSigned:
        return FieldType::Signed;
    case signatures::Role::Text:
        return FieldType::Text;
    case signatures::Role::Buffer:
    case signatures::Role::OutBuffer:
    case signatures::Role::OutRecord:
        return FieldType::Bytes;
    default:
        return FieldType::Unsigned;
    }
}

/// One type for one name: signed where one of the calls has a sign.
void addArguments(Index &index)
{
    for (unsigned call = 1; call <= signatures::callCount; ++call) {
        for (const signatures::Argument &argument : signatures::signatureOf(call)->arguments) {
            if (isLeftOut(argument.role))
                continue;
            const FieldType type = typeOf(argument.role);
            const auto [place, isNew] = index.arguments.try_emplace(argument.name, index.fields.size());
            if (isNew)
                index.fields.push_back({"call." + argument.name, type, 32, labelOf(argument.name)});
            else if (type == FieldType::Signed)
                index.fields[place->second].type = FieldType::Signed;
        }
    }
}

void addPayloadFields(Index &index)
{
    index.payloads = index.fields.size();
    for (const PayloadField &field : payloadFields) {
        const std::string name = field.name;
        FieldInfo info{name, field.type, field.bits, labelOf(name.substr(name.find('.') + 1))};
        info.unit = field.unit;
        for (std::int64_t value = 1; value <= 3 && field.valueNames[value - 1]; ++value)
            info.names.emplace_back(value, field.valueNames[value - 1]);
        index.fields.push_back(std::move(info));
    }
}

Index newIndex()
{
    Index index;
#define ADD(type, name) index.fields.push_back(headerField<type>(#name));
    CAPTURE_HEADER_FIELDS(ADD)
#undef ADD
    for (const reports::Layout *layout : reports::layouts) {
        index.layouts[layout] = index.fields.size();
        for (std::size_t i = 0; i < layout->fieldCount; ++i)
            index.fields.push_back(reportField(*layout, layout->fields[i]));
    }
    index.characters = index.fields.size();
    index.fields.push_back({"text.characters", FieldType::Text, 0, "Characters"});
    addArguments(index);
    addPayloadFields(index);
    index.mark = index.fields.size();
    index.fields.push_back({"mark", FieldType::Text, 0, "Mark"});
    return index;
}

const Index &index()
{
    static const Index built = newIndex();
    return built;
}

void addNumber(std::vector<FieldValue> &values, std::size_t place, std::int64_t number)
{
    FieldValue value;
    value.index = place;
    value.number = number;
    values.push_back(std::move(value));
}

void addText(std::vector<FieldValue> &values, std::size_t place, std::string text)
{
    FieldValue value;
    value.index = place;
    value.text = std::move(text);
    values.push_back(std::move(value));
}

void addEscaped(std::vector<FieldValue> &values, std::size_t place, capture::ByteView bytes)
{
    std::string text;
    appendEscaped(text, bytes.text());
    addText(values, place, std::move(text));
}

void addReport(std::vector<FieldValue> &values, const capture::Record &record)
{
    const reports::Bytes bytes{record.payload.data, record.payload.size};
    if (reports::formOf(bytes) == reports::Form::Text) {
        std::string characters;
        for (std::size_t i = reports::textOffset; i < bytes.length; ++i)
            reports::appendPrintable(characters, bytes.data[i]);
        addText(values, index().characters, std::move(characters));
        return;
    }
    const reports::Layout *layout = reports::layoutOf(bytes);
    if (!layout)
        return;
    const std::size_t first = index().layouts.at(layout);
    for (std::size_t i = 0; i < layout->fieldCount; ++i) {
        const reports::Field &field = layout->fields[i];
        // What is cut off is not there.
        if (field.offset + reports::widthInBytes(field) > bytes.length)
            continue;
        addNumber(values, first + i, reports::read(field, bytes));
        if (field.scale)
            values.back().decimal = field.scale->of(values.back().number);
    }
}

void addCall(std::vector<FieldValue> &values, const capture::Record &record)
{
    const signatures::Signature *signature = signatures::signatureOf(record.header.call);
    if (!signature)
        return;
    const bool isCall = record.header.kindOf() == capture::Kind::Call;
    for (const signatures::Value &value : isCall ? signatures::argumentsOf(*signature, record.payload)
                                                 : signatures::filledInBy(*signature, record.payload)) {
        const std::size_t place = index().arguments.at(value.argument->name);
        const FieldType type = index().fields[place].type;
        if (type == FieldType::Signed)
            addNumber(values, place, static_cast<std::int32_t>(value.number));
        else if (type == FieldType::Unsigned)
            addNumber(values, place, static_cast<std::uint32_t>(value.number));
        else if (!value.isNull && type == FieldType::Text)
            addEscaped(values, place, value.bytes);
        else if (!value.isNull)
            addText(values, place, std::string(value.bytes.text()));
    }
}

/// Those that are there whole.
void addPayload(std::vector<FieldValue> &values, const capture::Record &record)
{
    std::size_t offset = 0;
    for (std::size_t i = 0; i < std::size(payloadFields); ++i) {
        const PayloadField &field = payloadFields[i];
        const std::size_t width = field.bits / 8;
        if (field.kind != record.header.kindOf())
            continue;
        if (offset + width > record.payload.size)
            return;
        const auto number = capture::integerAt<std::int64_t>(record.payload.from(offset).first(width), 0);
        addNumber(values, index().payloads + i,
                  field.type == FieldType::Signed ? static_cast<std::int32_t>(number) : number);
        offset += width;
    }
}

} // namespace

std::string prefixOf(const reports::Layout &layout)
{
    std::string prefix;
    bool isNewWord = false;
    for (const char *at = layout.name; *at != 0; ++at) {
        if (*at != '-')
            prefix += isNewWord ? static_cast<char>(std::toupper(*at)) : *at;
        isNewWord = *at == '-';
    }
    return prefix;
}

const std::vector<FieldInfo> &allFields()
{
    return index().fields;
}

void fieldsOf(const capture::Record &record, std::vector<FieldValue> &values)
{
    values.clear();
    std::size_t place = 0;
#define ADD(type, name) addNumber(values, place++, static_cast<std::int64_t>(record.header.name));
    CAPTURE_HEADER_FIELDS(ADD)
#undef ADD
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        addReport(values, record);
        break;
    case capture::Kind::Call:
    case capture::Kind::Return:
        addCall(values, record);
        break;
    case capture::Kind::Mark:
        addEscaped(values, index().mark, record.payload);
        break;
    default:
        addPayload(values, record);
    }
    // Only arguments may come in another order.
    const auto isBefore = [](const FieldValue &a, const FieldValue &b) { return a.index < b.index; };
    if (!std::is_sorted(values.begin(), values.end(), isBefore))
        std::stable_sort(values.begin(), values.end(), isBefore);
}

void appendPrinted(std::string &line, const FieldValue &value)
{
    const FieldInfo &info = allFields()[value.index];
    char text[32];
    switch (info.type) {
    case FieldType::Signed:
        appendDecimal(line, value.number);
        break;
    case FieldType::Unsigned:
        appendDecimal(line, static_cast<std::uint64_t>(value.number));
        break;
    case FieldType::Hexadecimal:
        line += "0x";
        for (unsigned bits = info.bits; bits > 0; bits -= 4)
            line += hexDigits[(static_cast<std::uint64_t>(value.number) >> (bits - 4)) & 15];
        break;
    case FieldType::Decimal:
        std::snprintf(text, sizeof text, "%.15g", value.decimal);
        line += text;
        break;
    case FieldType::Text:
        line += value.text;
        break;
    case FieldType::Bytes:
        for (const char character : value.text) {
            const auto byte = static_cast<unsigned char>(character);
            line += hexDigits[byte >> 4];
            line += hexDigits[byte & 15];
        }
        break;
    }
}

} // namespace decoding
