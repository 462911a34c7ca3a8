#include "rowtext.h"

#include <charconv>
#include <iterator>

namespace reports {

namespace {

std::string_view quantity(char (&digits)[32], double value)
{
    // Independent of the locale, unlike printf's %g.
    const std::to_chars_result result =
        std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::general, 4);
    return {digits, static_cast<std::size_t>(result.ptr - digits)};
}

std::string_view decimal(char (&digits)[32], std::int64_t value)
{
    const std::to_chars_result result = std::to_chars(std::begin(digits), std::end(digits), value);
    return {digits, static_cast<std::size_t>(result.ptr - digits)};
}

std::string named(const ValueNames &names, std::int64_t value, Translate translate)
{
    for (std::size_t i = 0; i < names.count; ++i) {
        if (names.names[i].value == value)
            return translate(names.names[i].name);
    }
    std::string text = translate(names.otherwise);
    for (std::size_t place = text.find("%1"); place != std::string::npos; place = text.find("%1"))
        text.replace(place, 2, std::to_string(value));
    return text;
}

} // namespace

std::string RowText::filled(const Bytes &bytes, Translate translate) const
{
    std::string text;
    for (const Part &part : *this) {
        text.append(part.literal, part.literalLength);
        const std::int64_t value = read(*part.field, bytes);
        if (part.field->names) {
            text += named(*part.field->names, value, translate);
            continue;
        }
        char buffer[32];
        const std::string_view digits =
            part.field->scale ? quantity(buffer, part.field->scale->of(value)) : decimal(buffer, value);
        if (digits.size() < part.width)
            text.append(part.width - digits.size(), ' ');
        text += digits;
    }
    return text += rest;
}

} // namespace reports
