#include "simulator/textlines.h"

#include "monitor/reports/reportformats.h"

#include <array>
#include <cstdio>

namespace {

constexpr std::size_t signalLineLength = 74;

unsigned word(int value)
{
    return static_cast<std::uint16_t>(value);
}

} // namespace

std::string signalLine(const Measurement &m)
{
    std::array<char, signalLineLength + 1> line{};
    std::snprintf(line.data(), line.size(),
                  "%04x %04x %04x %04x %04x %04x *%04x %04x %04x %04x %04x %04x\r\n%c F: %04x  !",
                  word(m.xFine.c0), word(m.xFine.c60), word(m.xFine.c120), word(m.yFine.c0),
                  word(m.yFine.c60), word(m.yFine.c120), word(m.xCoarse.c0), word(m.xCoarse.c60),
                  word(m.xCoarse.c120), word(m.yCoarse.c0), word(m.yCoarse.c60), word(m.yCoarse.c120),
                  m.proximity, word(m.frequencyRaw));
    return line.data();
}

std::string plainLine(const std::string &text)
{
    const bool taken = text.size() + 1 == signalLineLength;
    return text + (taken ? ".!" : "!");
}

std::string statusLine(const Measurement &m)
{
    std::string line = "status: quality " + std::to_string(m.quality) + " rises " + std::to_string(m.risesX) +
                       "/" + std::to_string(m.risesY);
    while (reports::isAdcLength(static_cast<std::int64_t>(reports::textOffset + line.size())))
        line += '.';
    return line;
}
