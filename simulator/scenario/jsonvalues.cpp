#include "jsonvalues.h"

#include <cmath>
#include <limits>

namespace {

constexpr std::size_t longestRaw = 10000;

} // namespace

std::chrono::nanoseconds readSeconds(const JsonNode &node, double least)
{
    return std::chrono::nanoseconds(std::llround(node.number(least, lastSecond) * 1e9));
}

int readAmount(const JsonNode &node, int most)
{
    return static_cast<int>(node.integer(1, most));
}

int readId(const JsonNode &node)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<int>(node.integer(Limits::min(), Limits::max()));
}

std::uint32_t readSeed(const JsonNode &node)
{
    return static_cast<std::uint32_t>(node.integer(0, std::numeric_limits<std::uint32_t>::max()));
}

/// The characters as a board sends them.
Report readLatin1(const JsonNode &node)
{
    const std::string text = node.text();
    Report bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte > 0xC3)
            node.refuse("a character is not Latin-1; allowed are the characters up to U+00FF");
        if (byte < 0x80)
            bytes.push_back(byte);
        else
            bytes.push_back(static_cast<unsigned char>((byte & 0x03) << 6 | (text[++i] & 0x3F)));
    }
    if (bytes.size() > longestRaw)
        node.refuse("the text is too long; allowed are up to " + std::to_string(longestRaw) + " characters");
    return bytes;
}

Report readHex(const JsonNode &node)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string pairs;
    for (const char character : node.text()) {
        if (character != ' ')
            pairs +=
                static_cast<char>(character >= 'A' && character <= 'F' ? character - 'A' + 'a' : character);
    }
    if (pairs.size() % 2 != 0 || pairs.size() / 2 > longestRaw ||
        pairs.find_first_not_of(digits) != std::string::npos)
        node.refuse("these are not bytes; allowed are up to " + std::to_string(longestRaw) +
                    " pairs of hexadecimal digits with blanks between them");
    Report bytes;
    for (std::size_t i = 0; i < pairs.size(); i += 2)
        bytes.push_back(static_cast<unsigned char>(digits.find(pairs[i]) * 16 + digits.find(pairs[i + 1])));
    return bytes;
}
