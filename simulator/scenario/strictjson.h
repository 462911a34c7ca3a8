#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

using Json = nlohmann::json;

/// Why a file is not taken: `where` in it (may be empty), and what is wrong and what is allowed.
struct Refusal
{
    std::string where;
    std::string what;
};

/// Parses a document in which no object has a key twice; throws a Refusal that names line and column.
Json parseJson(const std::string &text);

// Values of a document, read strictly: whatever is not as it is asked for is thrown as a Refusal that names
// the path of the value.

[[noreturn]] void refuse(const Json &value, const std::string &what);

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
/// The list itself, which has `least` to `most` items.
const Json &items(const Json &list, std::size_t least, std::size_t most);

std::int64_t integer(const Json &value, std::int64_t least, std::int64_t most);
double number(const Json &value, double least, double most);
bool boolean(const Json &value);
std::string text(const Json &value);
