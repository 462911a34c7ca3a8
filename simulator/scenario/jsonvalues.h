#pragma once

#include "encoding.h"
#include "strictjson.h"

#include <chrono>
#include <cstdint>
#include <string>

/// What scenarios are made of, read as strictly as strictjson.h does.

inline constexpr double lastSecond = 86400;

/// 0 to `lastSecond`.
std::chrono::nanoseconds readSeconds(const Json &node);
/// 1 to `most`.
int readAmount(const Json &node, int most);
int readId(const Json &node);
std::uint32_t readSeed(const Json &node);
/// Text as a board sends it, in Latin-1.
std::string readLatin1(const Json &node);
/// Pairs of hexadecimal digits with or without blanks.
Report readHex(const Json &node);
