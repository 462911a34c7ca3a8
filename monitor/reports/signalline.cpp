#include "signalline.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace reports {

namespace {

constexpr std::size_t frequencyIndex = 67;

} // namespace

void readSignalLine(const std::string &line, SignalLine &values)
{
    unsigned short w[12];
    std::copy(std::begin(values.components), std::end(values.components), w);
    std::sscanf(line.c_str(), "%hx %hx %hx %hx %hx %hx *%hx %hx %hx %hx %hx %hx\r\n", &w[0], &w[1], &w[2],
                &w[3], &w[4], &w[5], &w[6], &w[7], &w[8], &w[9], &w[10], &w[11]);
    std::copy(std::begin(w), std::end(w), values.components);
    const std::size_t lineFeed = line.find('\n');
    // The "!" at the end makes sure that a character follows.
    if (lineFeed != std::string::npos)
        values.proximity = line[lineFeed + 1];
    auto frequency = static_cast<unsigned short>(values.frequencyRaw);
    std::sscanf(line.c_str() + frequencyIndex, "%hx", &frequency);
    values.frequencyRaw = static_cast<std::int16_t>(frequency);
}

std::string writeSignalLine(const SignalLine &values)
{
    unsigned w[12];
    std::transform(std::begin(values.components), std::end(values.components), w,
                   [](std::int16_t value) { return static_cast<std::uint16_t>(value); });
    std::array<char, signalLineLength + 1> line{};
    std::snprintf(line.data(), line.size(),
                  "%04x %04x %04x %04x %04x %04x *%04x %04x %04x %04x %04x %04x\r\n%c F: %04x  !", w[0], w[1],
                  w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9], w[10], w[11], values.proximity,
                  unsigned{static_cast<std::uint16_t>(values.frequencyRaw)});
    return line.data();
}

} // namespace reports
