#include "oddreports.h"

#include <string>

using namespace reports;

namespace {

constexpr int maxGarbage = 64;
constexpr std::size_t longLine = 10000;

/// A report of type 50 that ends a line, for the Monitor as for the bar graph.
Report lineReport(const std::string &text)
{
    return textReport(TextReport, text + "!\n");
}

} // namespace

Report OddReports::unknown()
{
    constexpr unsigned char unknownTypes[] = {33, 65, 200};
    Report report = randomBytes(6 + random.below(15));
    write(reportLength, static_cast<std::int64_t>(report.size()), report.data());
    write(reportType, unknownTypes[random.below(3)], report.data());
    return report;
}

Report OddReports::next(Kind kind)
{
    constexpr Report (OddReports::*makers[])() = {
        // by kind, from garbage on
        &OddReports::garbage,  &OddReports::allTypes,   &OddReports::endlessText,
        &OddReports::longText, &OddReports::markupText, &OddReports::everyByteText,
    };
    static_assert(static_cast<int>(Kind::Garbage) + std::size(makers) == kindCount);
    const auto make = makers[static_cast<int>(kind) - static_cast<int>(Kind::Garbage)];
    return (this->*make)();
}

Report OddReports::randomBytes(int length)
{
    Report report(static_cast<std::size_t>(length));
    for (unsigned char &byte : report)
        byte = static_cast<unsigned char>(random.below(256));
    return report;
}

Report OddReports::garbage()
{
    Report report = randomBytes(nextLength);
    nextLength = (nextLength + 1) % (maxGarbage + 1);
    return report;
}

Report OddReports::allTypes()
{
    Report report = randomBytes(40);
    write(reportLength, static_cast<std::int64_t>(report.size()), report.data());
    write(reportType, nextType++, report.data());
    return report;
}

Report OddReports::endlessText()
{
    std::string text = "on and on ";
    for (int words = random.below(4); words >= 0; --words)
        text += std::to_string(random.below(100000)) + ' ';
    return textReport(TextReport, text);
}

Report OddReports::longText()
{
    std::string text;
    while (text.size() < longLine)
        text += std::to_string(random.below(100000)) + ' ';
    text.resize(longLine - 2);
    return lineReport(text);
}

Report OddReports::markupText()
{
    return lineReport("<b>bold</b> <h1>&amp;&lt;%1 %2</h1> <img src=\"file:///nowhere.png\"> <a href='x'> " +
                      std::to_string(nextLine++));
}

Report OddReports::everyByteText()
{
    std::string text;
    // The line feed ends the line; the Monitor throws away what comes behind one in the same report.
    for (int value = 0; value < 256; ++value) {
        if (value != '\n')
            text += static_cast<char>(value);
    }
    return lineReport(text + std::to_string(nextLine++));
}
