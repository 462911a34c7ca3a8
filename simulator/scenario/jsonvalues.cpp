#include "jsonvalues.h"

#include <cmath>
#include <limits>

namespace {

constexpr std::size_t maxRaw = 10000;

} // namespace

std::chrono::nanoseconds readSeconds(const Json &node)
{
    return std::chrono::nanoseconds(std::llround(number(node, 0, lastSecond) * 1e9));
}

int readAmount(const Json &node, int most)
{
    return static_cast<int>(integer(node, 1, most));
}

int readId(const Json &node)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<int>(integer(node, Limits::min(), Limits::max()));
}

std::uint32_t readSeed(const Json &node)
{
    return static_cast<std::uint32_t>(integer(node, 0, std::numeric_limits<std::uint32_t>::max()));
}

std::string readLatin1(const Json &node)
{
    const std::string utf8 = text(node);
    std::string characters;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte > 0xC3)
            refuse(node, "a character is not Latin-1; allowed are the characters up to U+00FF");
        characters += static_cast<char>(byte < 0x80 ? byte : (byte & 0x03) << 6 | (utf8[++i] & 0x3F));
    }
    if (characters.size() > maxRaw)
        refuse(node, "the text is too long; allowed are up to " + std::to_string(maxRaw) + " characters");
    return characters;
}

Report readHex(const Json &node)
{
    std::string pairs = text(node);
    pairs.erase(std::remove(pairs.begin(), pairs.end(), ' '), pairs.end());
    if (pairs.size() % 2 != 0 || pairs.size() / 2 > maxRaw ||
        pairs.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        refuse(node, "these are not bytes; allowed are up to " + std::to_string(maxRaw) +
                         " pairs of hexadecimal digits with blanks between them");
    Report bytes;
    for (std::size_t i = 0; i < pairs.size(); i += 2)
        bytes.push_back(static_cast<unsigned char>(std::stoi(pairs.substr(i, 2), nullptr, 16)));
    return bytes;
}
