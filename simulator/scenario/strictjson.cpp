#include "strictjson.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

using nlohmann::json;

namespace {

std::string numbered(double number)
{
    return json(number).dump();
}

/// Number of the byte, from 1 on, as line and column.
std::string placeOf(const std::string &text, std::size_t byte)
{
    const std::string before = text.substr(0, byte == 0 ? 0 : byte - 1);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 when there is none
    return "line " + std::to_string(line) + ", column " + std::to_string(before.size() - lineStart + 1);
}

/// The library's message without its own numbers and places.
std::string reasonOf(const json::exception &error)
{
    const std::string whole = error.what();
    const std::size_t column = whole.find(", column ");
    const std::size_t end =
        whole.find(column == std::string::npos ? "] " : ": ", column == std::string::npos ? 0 : column);
    return end == std::string::npos ? whole : whole.substr(end + 2);
}

// Far more than a scenario has; what is deeper by far would exhaust the stack when it is shown.
constexpr int deepest = 32;

/// Checks while a document is read, and remembers the lists and objects that are open.
class DocumentCheck
{
public:
    bool operator()(int depth, json::parse_event_t event, json &parsed)
    {
        switch (event) {
        case json::parse_event_t::object_start:
        case json::parse_event_t::array_start:
            begin(depth, event == json::parse_event_t::array_start);
            break;
        case json::parse_event_t::key:
            takeKey(parsed);
            break;
        case json::parse_event_t::object_end:
        case json::parse_event_t::array_end:
            open.pop_back();
            [[fallthrough]];
        case json::parse_event_t::value:
            if (!open.empty())
                ++open.back().index;
        }
        return true;
    }

    /// Of the value that is being read.
    std::string path() const { return pathOf(open.size()); }

private:
    struct Level
    {
        bool isList;
        std::size_t index = 0;
        std::string key = {};
        std::set<std::string> keys = {};
    };

    void begin(int depth, bool isList)
    {
        if (depth >= deepest)
            throw Refusal{path(), "the lists and objects are nested too deep; allowed are " +
                                      std::to_string(deepest) + " in one another"};
        open.push_back({isList});
    }

    void takeKey(const json &key)
    {
        Level &level = open.back();
        level.key = key.get<std::string>();
        if (!level.keys.insert(level.key).second)
            throw Refusal{pathOf(open.size() - 1),
                          "the key " + key.dump() + " stands twice in one object; once is allowed"};
    }

    std::string pathOf(std::size_t levels) const
    {
        std::string path;
        for (std::size_t i = 0; i < levels; ++i)
            path += '/' + (open[i].isList ? std::to_string(open[i].index) : open[i].key);
        return path.empty() ? "/" : path;
    }

    std::vector<Level> open;
};

} // namespace

void JsonNode::refuse(const std::string &what) const
{
    throw Refusal{path.empty() ? "/" : path, what};
}

void JsonNode::allowKeys(std::initializer_list<std::string_view> keys) const
{
    if (!value->is_object())
        refuse(shown() + " is not an object; allowed is one with " + listed({keys.begin(), keys.end()}));
    for (const auto &[key, member] : value->items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end())
            refuse("the key " + json(key).dump() + " is not known; allowed are " +
                   listed({keys.begin(), keys.end()}));
    }
}

std::optional<JsonNode> JsonNode::find(const char *key) const
{
    const auto match = value->find(key);
    if (match == value->end())
        return std::nullopt;
    return JsonNode(*match, path + '/' + key);
}

JsonNode JsonNode::need(const char *key) const
{
    const auto found = find(key);
    if (!found)
        refuse(std::string("the key \"") + key + "\" is missing; it is needed here");
    return *found;
}

std::vector<std::pair<std::string, JsonNode>> JsonNode::members() const
{
    if (!value->is_object())
        refuse(shown() + " is not an object; one is needed here");
    std::vector<std::pair<std::string, JsonNode>> found;
    for (const auto &[key, member] : value->items())
        found.emplace_back(key, JsonNode(member, path + '/' + key));
    return found;
}

std::vector<JsonNode> JsonNode::items(std::size_t least, std::size_t most) const
{
    const std::string allowed =
        "; allowed is a list of " + std::to_string(least) + " to " + std::to_string(most);
    if (!value->is_array())
        refuse(shown() + " is not a list" + allowed);
    if (value->size() < least || value->size() > most)
        refuse("there are " + std::to_string(value->size()) + allowed);
    std::vector<JsonNode> found;
    for (std::size_t i = 0; i < value->size(); ++i)
        found.emplace_back((*value)[i], path + '/' + std::to_string(i));
    return found;
}

std::int64_t JsonNode::integer(std::int64_t least, std::int64_t most) const
{
    // A number that only fits without a sign is too large for anything here.
    const bool fits = value->is_number_integer() &&
                      !(value->is_number_unsigned() && value->get<std::uint64_t>() > INT64_MAX);
    const std::int64_t number = fits ? value->get<std::int64_t>() : 0;
    if (!fits || number < least || number > most)
        refuse(shown() + " is not allowed; allowed is a whole number from " + std::to_string(least) + " to " +
               std::to_string(most));
    return number;
}

double JsonNode::number(double least, double most) const
{
    const double number = value->is_number() ? value->get<double>() : std::nan("");
    if (!(number >= least && number <= most))
        refuse(shown() + " is not allowed; allowed is a number from " + numbered(least) + " to " +
               numbered(most));
    return number;
}

bool JsonNode::boolean() const
{
    if (!value->is_boolean())
        refuse(shown() + " is not allowed; allowed are true and false");
    return value->get<bool>();
}

std::string JsonNode::text() const
{
    if (!value->is_string())
        refuse(shown() + " is not allowed; allowed is text in quotes");
    return value->get<std::string>();
}

std::string JsonNode::shown() const
{
    constexpr std::size_t longest = 40;
    const std::string whole = value->dump(-1, ' ', true);
    return whole.size() <= longest ? whole : whole.substr(0, longest) + "...";
}

json parseJson(const std::string &text)
{
    DocumentCheck check;
    try {
        return json::parse(text, std::ref(check));
    } catch (const json::parse_error &error) {
        throw Refusal{placeOf(text, error.byte), "this is not JSON: " + reasonOf(error)};
    } catch (const json::exception &error) {
        throw Refusal{check.path(), "this cannot be read: " + reasonOf(error) +
                                        "; allowed are numbers from -1.7e308 to 1.7e308"};
    }
}

std::string listed(const std::vector<std::string> &words)
{
    std::string list;
    for (const std::string &word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}
