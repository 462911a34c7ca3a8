#include "fieldindex.h"

#include <cctype>
#include <iterator>
#include <type_traits>

#include "decoding.h"
#include "signatures.h"

namespace decoding {

namespace {

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
        for (std::int64_t value = 1; value <= 4 && field.valueNames[value - 1]; ++value)
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

} // namespace

const Index &index()
{
    static const Index built = newIndex();
    return built;
}

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

} // namespace decoding
