#include "strictjson.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>

#include "listed.h"

namespace {

// Far more than a scenario has; what is deeper by far would exhaust the stack when it is shown.
constexpr int maxDepth = 32;
constexpr std::size_t maxRaw = 10000; // characters or bytes of a report in the timeline

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
                throw Invalid{place(), "the lists and objects are nested too deep; allowed are " +
                                           std::to_string(maxDepth) + " in one another"};
            keys.emplace_back();
        } else if (event == Event::object_end || event == Event::array_end) {
            keys.pop_back();
        } else if (event == Event::key && !keys.back().insert(parsed.get<std::string>()).second) {
            throw Invalid{place(),
                          "the key " + parsed.dump() + " stands twice in one object; once is allowed"};
        }
        return true;
    };
    try {
        return Json::parse(stream, check);
    } catch (const Json::parse_error &error) {
        throw Invalid{placeOf(text, error.byte), "this is not JSON: " + reasonOf(error)};
    } catch (const Json::exception &error) {
        throw Invalid{place(), "this cannot be read: " + reasonOf(error) +
                                   "; allowed are numbers from -1.7e308 to 1.7e308"};
    }
}

void reject(const Json &value, const std::string &what)
{
    throw Invalid{pathOf(value), what};
}

void allowKeys(const Json &object, const std::vector<std::string_view> &keys)
{
    if (!object.is_object())
        reject(object, shown(object) + " is not an object; allowed is one with " + listed(keys));
    for (const auto &[key, member] : object.items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end())
            reject(object, "the key " + Json(key).dump() + " is not known; allowed are " + listed(keys));
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
        reject(object, std::string("the key \"") + key + "\" is missing; it is needed here");
    return *found;
}

const Json &items(const Json &list, std::size_t min, std::size_t max)
{
    const std::string allowed =
        "; allowed is a list of " + std::to_string(min) + " to " + std::to_string(max);
    if (!list.is_array())
        reject(list, shown(list) + " is not a list" + allowed);
    if (list.size() < min || list.size() > max)
        reject(list, "there are " + std::to_string(list.size()) + allowed);
    return list;
}

std::int64_t integer(const Json &value, std::int64_t min, std::int64_t max)
{
    // A number that only fits without a sign is too large for anything here.
    const bool fits =
        value.is_number_integer() && !(value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX);
    const std::int64_t number = fits ? value.get<std::int64_t>() : 0;
    if (!fits || number < min || number > max)
        reject(value, shown(value) + " is not allowed; allowed is a whole number from " +
                          std::to_string(min) + " to " + std::to_string(max));
    return number;
}

double number(const Json &value, double min, double max)
{
    const double number = value.is_number() ? value.get<double>() : std::nan("");
    if (!(number >= min && number <= max))
        reject(value, shown(value) + " is not allowed; allowed is a number from " + Json(min).dump() +
                          " to " + Json(max).dump());
    return number;
}

bool boolean(const Json &value)
{
    if (!value.is_boolean())
        reject(value, shown(value) + " is not allowed; allowed are true and false");
    return value.get<bool>();
}

std::string text(const Json &value)
{
    if (!value.is_string())
        reject(value, shown(value) + " is not allowed; allowed is text in quotes");
    return value.get<std::string>();
}

std::chrono::nanoseconds seconds(const Json &value)
{
    return std::chrono::nanoseconds(std::llround(number(value, 0, maxSeconds) * 1e9));
}

int positive(const Json &value, int max)
{
    return static_cast<int>(integer(value, 1, max));
}

int boardId(const Json &value)
{
    return static_cast<int>(integer(value, INT32_MIN, INT32_MAX));
}

std::string latin1(const Json &value)
{
    const std::string utf8 = text(value);
    std::string characters;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte > 0xC3)
            reject(value, "a character is not Latin-1; allowed are the characters up to U+00FF");
        characters += static_cast<char>(byte < 0x80 ? byte : (byte & 0x03) << 6 | (utf8[++i] & 0x3F));
    }
    if (characters.size() > maxRaw)
        reject(value, "the text is too long; allowed are up to " + std::to_string(maxRaw) + " characters");
    return characters;
}

std::vector<unsigned char> bytes(const Json &value)
{
    std::string pairs = text(value);
    pairs.erase(std::remove(pairs.begin(), pairs.end(), ' '), pairs.end());
    if (pairs.size() % 2 != 0 || pairs.size() / 2 > maxRaw ||
        pairs.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        reject(value, "these are not bytes; allowed are up to " + std::to_string(maxRaw) +
                          " pairs of hexadecimal digits with blanks between them");
    std::vector<unsigned char> found;
    for (std::size_t i = 0; i < pairs.size(); i += 2)
        found.push_back(static_cast<unsigned char>(std::stoi(pairs.substr(i, 2), nullptr, 16)));
    return found;
}
