#include "escaping.h"

#include <cstddef>

namespace decoding {

namespace {

/// Bytes of the character that a text begins with; 0 for a control character and for what is no UTF-8.
std::size_t characterLength(std::string_view text)
{
    static constexpr unsigned firstCodes[] = {0xA0, 0x800, 0x10000}; // of two, three and four bytes
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80)
        return first >= 0x20 && first != 0x7F ? 1 : 0;
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (first < 0xC2 || first > 0xF4 || length > text.size())
        return 0;
    unsigned code = first & (0x7Fu >> length);
    for (const char character : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(character);
        if ((byte & 0xC0) != 0x80)
            return 0;
        code = code << 6 | (byte & 0x3F);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= firstCodes[length - 2] && !isSurrogate && code <= 0x10FFFF ? length : 0;
}

void appendByte(std::string &text, char character)
{
    static constexpr char digits[] = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(character);
    if (character == '\r')
        text += "\\r";
    else if (character == '\n')
        text += "\\n";
    else
        ((text += "\\x") += digits[byte >> 4]) += digits[byte & 15];
}

void append(std::string &text, std::string_view bytes, bool isQuoted)
{
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0)
            appendByte(text, bytes[0]);
        else if (bytes[0] == '\\' || (isQuoted && bytes[0] == '"'))
            (text += '\\') += bytes[0];
        else
            text += bytes.substr(0, length);
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
}

} // namespace

void appendEscaped(std::string &text, std::string_view bytes)
{
    append(text, bytes, false);
}

void appendQuoted(std::string &text, std::string_view bytes)
{
    text += '"';
    append(text, bytes, true);
    text += '"';
}

} // namespace decoding
