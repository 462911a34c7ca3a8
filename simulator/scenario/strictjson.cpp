#include "strictjson.h"

#include "listed.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>

namespace {

// Far more than a scenario has; what is deeper by far would exhaust the stack when it is shown.
constexpr int maxDepth = 32;

std::string numbered(double number)
{
    return Json(number).dump();
}

/// Number of the byte, from 1 on, as line and column.
std::string placeOf(const std::string &text, std::size_t byte)
{
    const std::string before = text.substr(0, byte == 0 ? 0 : byte - 1);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 when there is none
    return "line " + std::to_string(line) + ", column " + std::to_string(before.size() - lineStart + 1);
}

/// The JSON library's message without its own numbers and places.
std::string reasonOf(const Json::exception &error)
{
    const std::string whole = error.what();
    const std::size_t column = whole.find(", column ");
    const std::size_t end =
        whole.find(column == std::string::npos ? "] " : ": ", column == std::string::npos ? 0 : column);
    return end == std::string::npos ? whole : whole.substr(end + 2);
}

/// What the JSON library says of a value's place, between brackets: "/boards/0/rate".
std::string pathOf(const Json &value)
{
    const std::string said = Json::other_error::create(501, "", &value).what();
    const std::size_t begin = said.find('(');
    return begin == std::string::npos ? "/" : said.substr(begin + 1, said.rfind(')') - begin - 1);
}

/// The beginning of the value as it stands in the document.
std::string shown(const Json &value)
{
    constexpr std::size_t maxLength = 40;
    const std::string whole = value.dump(-1, ' ', true);
    return whole.size() <= maxLength ? whole : whole.substr(0, maxLength) + "...";
}

} // namespace

Json parseJson(const std::string &text)
{
    std::istringstream stream(text);
    const auto place = [&] {
        const auto read = stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in);
        return placeOf(text, static_cast<std::size_t>(read));
    };
    std::vector<std::set<std::string>> keys; // of the lists and objects that are open
    const auto check = [&](int depth, Json::parse_event_t event, Json &parsed) {
        using Event = Json::parse_event_t;
        if (event == Event::object_start || event == Event::array_start) {
            if (depth >= maxDepth)
                throw Refusal{place(), "the lists and objects are nested too deep; allowed are " +
                                           std::to_string(maxDepth) + " in one another"};
            keys.emplace_back();
        } else if (event == Event::object_end || event == Event::array_end) {
            keys.pop_back();
        } else if (event == Event::key && !keys.back().insert(parsed.get<std::string>()).second) {
            throw Refusal{place(),
                          "the key " + parsed.dump() + " stands twice in one object; once is allowed"};
        }
        return true;
    };
    try {
        return Json::parse(stream, check);
    } catch (const Json::parse_error &error) {
        throw Refusal{placeOf(text, error.byte), "this is not JSON: " + reasonOf(error)};
    } catch (const Json::exception &error) {
        throw Refusal{place(), "this cannot be read: " + reasonOf(error) +
                                   "; allowed are numbers from -1.7e308 to 1.7e308"};
    }
}

void refuse(const Json &value, const std::string &what)
{
    throw Refusal{pathOf(value), what};
}

void allowKeys(const Json &object, const std::vector<std::string_view> &keys)
{
    if (!object.is_object())
        refuse(object, shown(object) + " is not an object; allowed is one with " + listed(keys));
    for (const auto &[key, member] : object.items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end())
            refuse(object, "the key " + Json(key).dump() + " is not known; allowed are " + listed(keys));
    }
}

const Json *find(const Json &object, const char *key)
{
    const auto match = object.find(key);
    return match == object.end() ? nullptr : &*match;
}

const Json &need(const Json &object, const char *key)
{
    const Json *found = find(object, key);
    if (!found)
        refuse(object, std::string("the key \"") + key + "\" is missing; it is needed here");
    return *found;
}

const Json &items(const Json &list, std::size_t least, std::size_t most)
{
    const std::string allowed =
        "; allowed is a list of " + std::to_string(least) + " to " + std::to_string(most);
    if (!list.is_array())
        refuse(list, shown(list) + " is not a list" + allowed);
    if (list.size() < least || list.size() > most)
        refuse(list, "there are " + std::to_string(list.size()) + allowed);
    return list;
}

std::int64_t integer(const Json &value, std::int64_t least, std::int64_t most)
{
    // A number that only fits without a sign is too large for anything here.
    const bool fits =
        value.is_number_integer() && !(value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX);
    const std::int64_t number = fits ? value.get<std::int64_t>() : 0;
    if (!fits || number < least || number > most)
        refuse(value, shown(value) + " is not allowed; allowed is a whole number from " +
                          std::to_string(least) + " to " + std::to_string(most));
    return number;
}

double number(const Json &value, double least, double most)
{
    const double number = value.is_number() ? value.get<double>() : std::nan("");
    if (!(number >= least && number <= most))
        refuse(value, shown(value) + " is not allowed; allowed is a number from " + numbered(least) + " to " +
                          numbered(most));
    return number;
}

bool boolean(const Json &value)
{
    if (!value.is_boolean())
        refuse(value, shown(value) + " is not allowed; allowed are true and false");
    return value.get<bool>();
}

std::string text(const Json &value)
{
    if (!value.is_string())
        refuse(value, shown(value) + " is not allowed; allowed is text in quotes");
    return value.get<std::string>();
}
