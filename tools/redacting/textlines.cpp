#include "textlines.h"

#include <algorithm>
#include <string_view>

namespace redacting {

namespace {

constexpr std::string_view lineEnds{"\n!"};
constexpr std::string_view frequencyLabel{" F: "}; ///< "\nO F: 07d0": behind the proximity
constexpr std::size_t labelIndex = 2;              ///< from the line feed
constexpr std::size_t frequencyEnd = 10;
constexpr std::ptrdiff_t minOtherLetters = 2;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool isHexDigit(char character)
{
    return isDigit(character) || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

bool isAlphanumeric(char character)
{
    return isDigit(character) || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z');
}

bool mayBeNumber(std::string_view word)
{
    const std::ptrdiff_t hexDigits = std::count_if(word.begin(), word.end(), isHexDigit);
    const auto otherLetters = static_cast<std::ptrdiff_t>(word.size()) - hexDigits;
    return hexDigits > 0 &&
           (otherLetters < minOtherLetters || std::any_of(word.begin(), word.end(), isDigit));
}

bool mayHaveNumber(std::string_view text)
{
    while (!text.empty()) {
        const auto size = static_cast<std::size_t>(
            std::find_if_not(text.begin(), text.end(), isAlphanumeric) - text.begin());
        if (mayBeNumber(text.substr(0, size)))
            return true;
        text.remove_prefix(std::min(size + 1, text.size()));
    }
    return false;
}

bool isOfFrequency(std::string_view text, std::size_t index)
{
    const std::size_t lineFeed = text.find_last_of(lineEnds, index);
    return lineFeed != std::string_view::npos && text[lineFeed] == '\n' && index - lineFeed < frequencyEnd &&
           text.substr(lineFeed + labelIndex, frequencyLabel.size()) == frequencyLabel;
}

bool blankDigits(std::string &text, std::size_t first, std::size_t end)
{
    bool isAnyBlanked = false;
    for (std::size_t i = first; i < end; ++i) {
        if (!isHexDigit(text[i]) || isOfFrequency(text, i))
            continue;
        text[i] = '0';
        isAnyBlanked = true;
    }
    return isAnyBlanked;
}

} // namespace

bool TextLines::blank(std::string &text)
{
    const std::size_t begin = before.size();
    std::string all = before + text;
    bool isAnyBlanked = false;
    for (std::size_t first = begin; first < all.size();) {
        const std::size_t end = std::min(all.find_first_of(lineEnds, first), all.size());
        hasNumber = hasNumber || mayHaveNumber(std::string_view(all).substr(first, end - first));
        if (hasNumber)
            isAnyBlanked = blankDigits(all, first, end) || isAnyBlanked;
        if (end < all.size())
            hasNumber = false;
        first = end + 1;
    }
    text = all.substr(begin);
    before = all.substr(all.size() - std::min(all.size(), frequencyEnd));
    return isAnyBlanked;
}

} // namespace redacting
