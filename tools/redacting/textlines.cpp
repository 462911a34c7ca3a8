#include "textlines.h"

#include <algorithm>
#include <string_view>

#include "signalline.h"

namespace redacting {

namespace {

constexpr std::string_view lineEnds{"\r\n!"};
constexpr std::size_t wordDigits = 4;
constexpr std::ptrdiff_t fewWords = 3;

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

/// What scanning for hexadecimal numbers passes over.
bool isBetweenWords(char character)
{
    return std::string_view(" \t\v\f*+-xX").find(character) != std::string_view::npos;
}

/// `use(first, last)` for each run of letters and digits.
template <typename Iterator, typename Use>
void forEachRun(Iterator first, Iterator last, Use use)
{
    for (;;) {
        first = std::find_if(first, last, isAlphanumeric);
        if (first == last)
            return;
        const Iterator end = std::find_if_not(first, last, isAlphanumeric);
        use(first, end);
        first = end;
    }
}

bool isOfWords(const std::string &line)
{
    if (std::all_of(line.begin(), line.end(), [](char c) { return isHexDigit(c) || isBetweenWords(c); }))
        return true;
    std::ptrdiff_t words = 0;
    forEachRun(line.begin(), line.end(), [&words](auto first, auto last) {
        words += last - first == wordDigits && std::all_of(first, last, isHexDigit) ? 1 : 0;
    });
    return words >= fewWords;
}

bool blankWords(std::string::iterator from, std::string::iterator to)
{
    bool isAnyBlanked = false;
    forEachRun(from, to, [&isAnyBlanked](auto first, auto last) {
        const bool isWord =
            std::all_of(first, last, [](char c) { return isHexDigit(c) || isBetweenWords(c); });
        if (!isWord)
            return;
        isAnyBlanked = isAnyBlanked || std::any_of(first, last, isHexDigit);
        std::replace_if(first, last, isHexDigit, '0');
    });
    return isAnyBlanked;
}

} // namespace

bool TextLines::blank(std::string &text)
{
    bool isAnyBlanked = false;
    auto first = text.begin();
    while (first != text.end()) {
        const auto end = std::find_first_of(first, text.end(), lineEnds.begin(), lineEnds.end());
        begun.append(first, end);
        if (isOfWords(begun))
            isAnyBlanked = blankWords(first, end) || isAnyBlanked;
        if (end == text.end())
            break;
        begun.clear();
        first = end + 1;
    }
    if (begun.size() > reports::signalLineLength)
        begun.erase(0, begun.size() - reports::signalLineLength);
    return isAnyBlanked;
}

} // namespace redacting
