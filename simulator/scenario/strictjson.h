#pragma once

#include <chrono>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

using Json = nlohmann::json;

/// Why a file is not valid: `where` in it (may be empty), and what is wrong and what is allowed.
struct Invalid
{
    std::string where;
    std::string what;
};

/// Parses a document in which no object has a key twice; throws an Invalid that names line and column.
Json parseJson(const std::string &text);

// Values of a document, read strictly: whatever is not as it is asked for is thrown as an Invalid that names
// the path of the value.

[[noreturn]] void reject(const Json &value, const std::string &what);

/// It must be an object, and these are its only keys.
void allowKeys(const Json &object, const std::vector<std::string_view> &keys);
/// Null when there is no such key.
const Json *find(const Json &object, const char *key);
const Json &need(const Json &object, const char *key);
/// What is read of the key's value; when there is no such key, nothing changes.
template <typename Value, typename Read>
void take(const Json &object, const char *key, Value &value, Read read)
{
    if (const Json *found = find(object, key))
        value = read(*found);
}
/// The list itself, which has `min` to `max` items.
const Json &items(const Json &list, std::size_t min, std::size_t max);

std::int64_t integer(const Json &value, std::int64_t min, std::int64_t max);
double number(const Json &value, double min, double max);
bool boolean(const Json &value);
std::string text(const Json &value);

inline constexpr double maxSeconds = 86400;
/// 0 to `maxSeconds`.
std::chrono::nanoseconds seconds(const Json &value);
/// 1 to `max`.
int positive(const Json &value, int max);
int boardId(const Json &value);
/// Characters in Latin-1, as a board sends them.
std::string latin1(const Json &value);
/// Pairs of hexadecimal digits with or without blanks.
std::vector<unsigned char> bytes(const Json &value);
