#pragma once

#include <string_view>

namespace marking {

/// Whether it is UTF-8 throughout: no byte sequence that is too long, no half of a surrogate pair.
bool isUtf8(std::string_view text);

} // namespace marking
