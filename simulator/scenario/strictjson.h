#pragma once

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Why a file is not taken: `where` in it (may be empty), and what is wrong and what is allowed.
struct Refusal
{
    std::string where;
    std::string what;
};

/// A value of a JSON document, read strictly: whatever is not as it is asked for is thrown as a Refusal.
class JsonNode
{
public:
    JsonNode(const nlohmann::json &value_, std::string path_)
        : value(&value_)
        , path(std::move(path_))
    {
    }

    [[noreturn]] void refuse(const std::string &what) const;

    /// It must be an object, and these are its only keys.
    void allowKeys(std::initializer_list<std::string_view> keys) const;
    std::optional<JsonNode> find(const char *key) const;
    JsonNode need(const char *key) const;
    std::vector<std::pair<std::string, JsonNode>> members() const;
    std::vector<JsonNode> items(std::size_t least, std::size_t most) const;

    std::int64_t integer(std::int64_t least, std::int64_t most) const;
    double number(double least, double most) const;
    bool boolean() const;
    std::string text() const;
    bool isText() const { return value->is_string(); }

private:
    /// The beginning of the value as it stands in the document.
    std::string shown() const;

    const nlohmann::json *value;
    std::string path;
};

/// Parses a document in which no object has a key twice; throws a Refusal that names
/// line and column, or the path of the value.
nlohmann::json parseJson(const std::string &text);

/// "a, b, c".
std::string listed(const std::vector<std::string> &words);
