#pragma once

#include "encoding.h"
#include "strictjson.h"

#include <chrono>
#include <cstdint>

/// What scenarios are made of, read strictly as JsonNode does.

std::chrono::nanoseconds readSeconds(const JsonNode &node, double least);
/// 1 to `most`.
int readAmount(const JsonNode &node, int most);
int readId(const JsonNode &node);
std::uint32_t readSeed(const JsonNode &node);
/// Text as a board sends it, in Latin-1.
Report readLatin1(const JsonNode &node);
/// Pairs of hexadecimal digits with or without blanks.
Report readHex(const JsonNode &node);

inline constexpr double lastSecond = 86400;
