#include "encoding.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "signalline.h"

using namespace reports;

namespace {

using Values = std::vector<std::int64_t>;

void append(Values &values, double number)
{
    values.push_back(std::llround(number));
}

void append(Values &values, const Phases &phases)
{
    values.insert(values.end(), {phases.c0, phases.c60, phases.c120});
}

template <typename... Parts>
Values list(const Parts &...parts)
{
    Values values;
    (append(values, parts), ...);
    return values;
}

int flagsOf(const Pen &pen)
{
    return (pen.touches ? 0x80 : 0) | pen.buttons;
}

/// The raw outputs, of which these are the normalised ones.
Phases rawOf(const Phases &phases)
{
    constexpr int gain = 4;
    return {phases.c0 * gain, phases.c60 * gain, phases.c120 * gain};
}

Values positionValues(const Measurement &m)
{
    const auto x = static_cast<int>(std::lround(m.pen.x));
    const auto y = static_cast<int>(std::lround(m.pen.y));
    const auto proximity = static_cast<int>(100 * m.pen.strength);
    const auto drive = static_cast<int>(255 * m.pen.strength);
    return list(m.quality, proximity, x, y, x % finePitch, y % finePitch, x / finePitch, y / finePitch, drive,
                x / finePitch % 2, drive, y / finePitch % 2);
}

/// What a board sends of one kind.
struct Sent
{
    const Layout *layout;
    int weight;                               ///< reports in a round, unless a scenario says otherwise
    Values (*valuesOf)(const Measurement &m); ///< of the layout's fields, in their order
};

/// In the order of the layouts. The bar graph takes the integrator outputs of signals 4 and 5 for the fine
/// and the normalised ones for the coarse signal of x. No voltages: one turns it into a meter for good.
constexpr Sent sent[] = {
    {&signal1, 5,
     [](const Measurement &m) {
         return list(static_cast<std::uint16_t>(m.risesX), static_cast<std::uint16_t>(m.risesY), m.xFine,
                     m.yFine, m.xCoarse, m.yCoarse, m.frequencyRaw);
     }},
    {&signal2, 2, [](const Measurement &m) { return list(rawOf(m.xFine), m.integrations, m.xFine); }},
    {&signal3, 2,
     [](const Measurement &m) {
         return list(m.pen.touches, m.integrations % 4, m.quality, m.minimumQuality, m.maximumQuality);
     }},
    {&signal4, 2, [](const Measurement &m) { return list(m.xFine, m.integrations); }},
    {&signal5, 3, [](const Measurement &m) { return list(m.xFine, m.integrations, m.xCoarse); }},
    {&signal6, 2,
     [](const Measurement &m) {
         return list(m.qualityX, m.qualityY, m.quality, m.minimumQuality, m.maximumQuality, m.risesX % 1000,
                     m.risesX, m.risesY % 1000, m.risesY);
     }},
    {&phase, 2,
     [](const Measurement &m) {
         return list(m.xFine, m.xCoarse, m.yFine, m.yCoarse, m.integrations, m.integrations + 1,
                     m.integrations / 2, m.integrations / 2 + 1, m.qualityX, m.qualityY, m.offset);
     }},
    {&penIdentity, 2, [](const Measurement &m) { return list(m.studentWrites, m.quality, m.pen.buttons); }},
    {&dualPen, 2,
     [](const Measurement &m) {
         return list(1, m.pen.x, m.pen.y, flagsOf(m.pen), m.secondPen.x, m.secondPen.y, flagsOf(m.secondPen));
     }},
    {&position, 2, positionValues},
    {&adc, 0, [](const Measurement &m) { return list(m.adcRaw); }},
};
static_assert(std::size(sent) == std::size(layouts), "what is sent of each layout");

} // namespace

const Weights usualWeights = [] {
    Weights weights{};
    std::size_t kind = 0;
    for (const Sent &row : sent)
        weights[kind++] = row.weight;
    return weights;
}();

Report encode(Kind kind, const Measurement &measurement)
{
    const Sent &row = sent[static_cast<std::size_t>(kind)];
    const Layout &layout = *row.layout;
    Report report(layout.sentLength, 0);
    write(reportLength, layout.sentLength, report.data());
    write(reportType, layout.type, report.data());
    if (layout.subType)
        write(reportSubType, layout.subType, report.data());
    const Values values = row.valuesOf(measurement);
    for (std::size_t i = 0; i < std::min(values.size(), layout.fieldCount); ++i)
        write(layout.fields[i], values[i], report.data());
    return report;
}

Report textReport(Type type, std::string_view text)
{
    Report report(textOffset + text.size());
    write(reportLength, static_cast<std::int64_t>(std::min<std::size_t>(report.size(), 255)), report.data());
    write(reportType, type, report.data());
    std::copy(text.begin(), text.end(), report.begin() + textOffset);
    return report;
}

std::string signalLine(const Measurement &m)
{
    const auto word = [](int value) { return static_cast<std::int16_t>(value); };
    SignalLine line;
    std::int16_t *component = line.components;
    for (const Phases *phases : {&m.xFine, &m.yFine, &m.xCoarse, &m.yCoarse}) {
        for (const int value : {phases->c0, phases->c60, phases->c120})
            *component++ = word(value);
    }
    line.proximity = m.proximity;
    line.frequencyRaw = word(m.frequencyRaw);
    return writeSignalLine(line);
}

std::string plainLine(const std::string &text)
{
    const bool taken = text.size() + 1 == signalLineLength;
    return text + (taken ? ".!" : "!");
}

std::string statusLine(const Measurement &m)
{
    // Never one of the lengths by which the bar graph knows a voltage: 48 characters at most, 50 with the
    // header.
    return "status: quality " + std::to_string(m.quality) + " rises " + std::to_string(m.risesX) + "/" +
           std::to_string(m.risesY);
}
