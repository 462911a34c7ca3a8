#include "textlines.h"

#include "layouts.h"
#include "signalline.h"

std::string signalLine(const Measurement &m)
{
    const auto word = [](int value) { return static_cast<std::int16_t>(value); };
    reports::SignalLine line;
    std::int16_t *component = line.components;
    for (const Phases *phases : {&m.xFine, &m.yFine, &m.xCoarse, &m.yCoarse}) {
        for (const int value : {phases->c0, phases->c60, phases->c120})
            *component++ = word(value);
    }
    line.proximity = m.proximity;
    line.frequencyRaw = word(m.frequencyRaw);
    return reports::writeSignalLine(line);
}

std::string plainLine(const std::string &text)
{
    const bool taken = text.size() + 1 == reports::signalLineLength;
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
