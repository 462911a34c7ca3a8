#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "field.h"

namespace reports {

/// Turns an English name of a value into the reader's language, in UTF-8.
using Translate = std::string (*)(const char *english);

/// Not constexpr, so that a wrong row text in a constant expression is a compile error.
void rowTextIsWrong();

/// One text of a row: literal text, and fields by name with the min width to which their values are padded
/// with blanks on the left. Checked at compile time.
/// \code
/// RowText("Raw 0: {raw0:5}   60: {raw60:5}", fields) // "Raw 0:   -12   60:  1034"
/// \endcode
class RowText
{
public:
    /// A field, and the text before it.
    struct Part
    {
        const char *literal = nullptr;
        std::size_t literalLength = 0;
        const Field *field = nullptr;
        std::size_t width = 0;
    };

    constexpr RowText() = default;

    template <std::size_t Count>
    constexpr RowText(const char *format, const Field (&fields)[Count])
    {
        const char *literal = format;
        for (const char *at = format; *at != '\0'; ++at) {
            if (*at != '{')
                continue;
            const char *end = at;
            while (*end != '}')
                *end == '\0' ? rowTextIsWrong() : void(++end);
            addPart(literal, at, {at + 1, static_cast<std::size_t>(end - at - 1)}, fields);
            at = end;
            literal = end + 1;
        }
        rest = literal;
    }

    /// \return UTF-8
    std::string filled(const Bytes &bytes, Translate translate) const;

    const Part *begin() const { return parts; }
    const Part *end() const { return parts + partCount; }
    /// The text behind the last field.
    const char *ending() const { return rest; }

private:
    template <std::size_t Count>
    constexpr void addPart(const char *literal, const char *literalEnd, std::string_view placeholder,
                           const Field (&fields)[Count])
    {
        if (partCount == maxParts)
            rowTextIsWrong();
        Part &part = parts[partCount++];
        part.literal = literal;
        part.literalLength = static_cast<std::size_t>(literalEnd - literal);
        const std::size_t colon = placeholder.find(':');
        std::size_t index = 0; // neither references nor null pointers, of which sanitizers make no constants
        while (index < Count && placeholder.substr(0, colon) != fields[index].name)
            ++index;
        if (index == Count)
            rowTextIsWrong();
        part.field = fields + index;
        for (std::size_t i = colon; i != std::string_view::npos && ++i < placeholder.size();)
            part.width = 10 * part.width + static_cast<std::size_t>(placeholder[i] - '0');
    }

    static constexpr std::size_t maxParts = 16;
    Part parts[maxParts];
    std::size_t partCount = 0;
    const char *rest = "";
};

} // namespace reports
