#include "fields.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "decoding.h"
#include "escaping.h"
#include "fieldindex.h"
#include "lines.h"
#include "signatures.h"

namespace decoding {

namespace {

constexpr char hexDigits[] = "0123456789abcdef";

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
