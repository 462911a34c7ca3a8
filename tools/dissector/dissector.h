#pragma once

#include <string_view>

/// Wireshark's dissector of captures, in Lua.
std::string_view dissectorText();
