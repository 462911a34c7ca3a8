#pragma once

#include <string_view>

/// Copies text into a caller's buffer, cut where there is no more room and ended with a zero byte.
/// \param buffer may be null when `size` is 0
/// \return the length of the whole text
inline int copyText(std::string_view text, char *buffer, std::size_t size)
{
    if (buffer && size > 0)
        buffer[text.copy(buffer, size - 1)] = 0;
    return static_cast<int>(text.size());
}
