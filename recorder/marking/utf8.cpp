#include "utf8.h"

namespace marking {

namespace {

/// Number of bytes of the character at an index; 0 where there is no UTF-8.
std::size_t utf8Length(std::string_view text, std::size_t index)
{
    const auto byteAt = [&text](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
    };
    const unsigned lead = byteAt(index);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    unsigned code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(index + i) & 0xC0) != 0x80)
            return 0;
        code = code << 6 | (byteAt(index + i) & 0x3F);
    }
    constexpr unsigned first[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isCharacter = lead >= 0xC0 && lead < 0xF8 && code >= first[length] && code <= 0x10FFFF &&
                             (code < 0xD800 || code > 0xDFFF);
    return isCharacter ? length : 0;
}

} // namespace

bool isUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = utf8Length(text, i);
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

} // namespace marking
