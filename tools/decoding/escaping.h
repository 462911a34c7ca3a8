#pragma once

#include <string>
#include <string_view>

namespace decoding {

/// Appends a text as UTF-8 without control characters: these, a backslash and each byte that is no UTF-8
/// as "\r", "\n", "\\" or "\x1b".
void appendEscaped(std::string &text, std::string_view bytes);

/// The same in quotes, and quotes in it as "\"".
void appendQuoted(std::string &text, std::string_view bytes);

} // namespace decoding
