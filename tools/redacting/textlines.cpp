#include "textlines.h"

#include <algorithm>

namespace redacting {

namespace {

constexpr std::string_view lineEnds{"\n!"};
constexpr std::string_view frequencyLabel{" F: "}; ///< "\nO F: 07d0": behind the proximity
constexpr std::size_t labelIndex = 2;              ///< from the line feed
constexpr std::size_t frequencyEnd = 10;
constexpr std::size_t wordDigits = 4;
constexpr std::size_t minOtherLetters = 2;
constexpr std::size_t minProseWord = 4;
constexpr std::size_t minProseLetters = 3;
constexpr std::size_t maxProseNumbers = 1;

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

/// Of a damaged word of four digits as well.
bool mayBeNumber(std::string_view word)
{
    const auto otherLetters =
        word.size() - static_cast<std::size_t>(std::count_if(word.begin(), word.end(), isHexDigit));
    return word.size() <= wordDigits || otherLetters < minOtherLetters ||
           std::any_of(word.begin(), word.end(), isDigit);
}

bool isOfFrequency(std::string_view text, std::size_t index)
{
    const std::size_t lineFeed = text.find_last_of(lineEnds, index);
    return lineFeed != std::string_view::npos && text[lineFeed] == '\n' && index - lineFeed < frequencyEnd &&
           text.substr(lineFeed + labelIndex, frequencyLabel.size()) == frequencyLabel;
}

bool blankWord(std::string &text, std::size_t first, std::size_t end)
{
    bool isAnyBlanked = false;
    if (!mayBeNumber(std::string_view(text).substr(first, end - first)))
        return isAnyBlanked;
    for (std::size_t i = first; i < end; ++i) {
        if (!isHexDigit(text[i]) || isOfFrequency(text, i))
            continue;
        text[i] = '0';
        isAnyBlanked = true;
    }
    return isAnyBlanked;
}

bool blankWords(std::string &text, std::size_t first, std::size_t end)
{
    bool isAnyBlanked = false;
    while (first < end) {
        const auto word = text.begin() + static_cast<std::ptrdiff_t>(first);
        const auto size = static_cast<std::size_t>(std::find_if_not(word, text.end(), isAlphanumeric) - word);
        isAnyBlanked = blankWord(text, first, first + size) || isAnyBlanked;
        first += size + 1;
    }
    return isAnyBlanked;
}

} // namespace

void TextLines::Word::add(char character)
{
    ++size;
    digits += isDigit(character) ? 1 : 0;
    otherLetters += isHexDigit(character) ? 0 : 1;
}

std::size_t TextLines::Word::lettersOfProse() const
{
    return size >= minProseWord && digits == 0 ? otherLetters : 0;
}

bool TextLines::Word::isNumber() const
{
    return size == wordDigits && otherLetters == 0;
}

void TextLines::Line::add(std::string_view text)
{
    for (const char character : text) {
        if (isAlphanumeric(character)) {
            last.add(character);
            continue;
        }
        otherLetters += last.lettersOfProse();
        numbers += last.isNumber() ? 1 : 0;
        last = {};
    }
}

bool TextLines::Line::isProse() const
{
    return otherLetters + last.lettersOfProse() >= minProseLetters &&
           numbers + (last.isNumber() ? 1 : 0) <= maxProseNumbers;
}

bool TextLines::blank(std::string &text)
{
    const std::size_t begin = before.size();
    std::string all = before + text;
    bool isAnyBlanked = false;
    for (std::size_t first = begin; first < all.size();) {
        const std::size_t lineEnd = all.find_first_of(lineEnds, first);
        const std::size_t end = std::min(lineEnd, all.size());
        line.add(std::string_view(all).substr(first, end - first));
        if (!line.isProse())
            isAnyBlanked = blankWords(all, first, end) || isAnyBlanked;
        if (end == lineEnd)
            line = {};
        first = end + 1;
    }
    text = all.substr(begin);
    before = all.substr(all.size() - std::min(all.size(), frequencyEnd));
    return isAnyBlanked;
}

} // namespace redacting
