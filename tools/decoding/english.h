#pragma once

#include <string>

namespace decoding {

/// The texts of a row as they are, for reports::fieldRow(): the tools print them in English.
inline std::string inEnglish(const char *english)
{
    return english;
}

} // namespace decoding
