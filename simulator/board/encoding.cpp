#include "encoding.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iterator>

using namespace reports;

namespace {

static_assert(std::size(layouts) == layoutKindCount, "a kind for each layout");

const Layout &layoutOf(Kind kind)
{
    return *layouts[static_cast<std::size_t>(kind)];
}

/// A report of a kind whose fields have the given values, in the order of their bytes.
Report filled(Kind kind, std::initializer_list<std::int64_t> values)
{
    const Layout &layout = layoutOf(kind);
    Report report(layout.sentLength, 0);
    write(reportLength, layout.sentLength, report.data());
    write(reportType, layout.type, report.data());
    if (layout.subType)
        write(reportSubType, layout.subType, report.data());
    const Field *field = layout.fields;
    for (const std::int64_t value : values)
        write(*field++, value, report.data());
    return report;
}

std::int64_t whole(double coordinate)
{
    return std::llround(coordinate);
}

int flagsOf(const Pen &pen)
{
    return (pen.touches ? 0x80 : 0) | pen.buttons;
}

Report signal1Report(const Measurement &m)
{
    return filled(Kind::Signal1, {static_cast<std::uint16_t>(m.risesX), static_cast<std::uint16_t>(m.risesY),
                                  m.xFine.c0, m.xFine.c60, m.xFine.c120, m.yFine.c0, m.yFine.c60,
                                  m.yFine.c120, m.xCoarse.c0, m.xCoarse.c60, m.xCoarse.c120, m.yCoarse.c0,
                                  m.yCoarse.c60, m.yCoarse.c120, m.frequencyRaw});
}

constexpr std::int64_t rawGain = 4; // of the raw over the normalised outputs

Report signal2Report(const Measurement &m)
{
    return filled(Kind::Signal2, {m.xFine.c0 * rawGain, m.xFine.c60 * rawGain, m.xFine.c120 * rawGain,
                                  m.integrations, m.xFine.c0, m.xFine.c60, m.xFine.c120});
}

Report signal3Report(const Measurement &m)
{
    return filled(Kind::Signal3,
                  {m.pen.touches, m.integrations % 4, m.quality, m.minimumQuality, m.maximumQuality});
}

// The bar graph takes the integrator outputs for the fine and the normalised ones for the coarse signal of x.
Report signal4Report(const Measurement &m)
{
    return filled(Kind::Signal4, {m.xFine.c0, m.xFine.c60, m.xFine.c120, m.integrations});
}

Report signal5Report(const Measurement &m)
{
    return filled(Kind::Signal5, {m.xFine.c0, m.xFine.c60, m.xFine.c120, m.integrations, m.xCoarse.c0,
                                  m.xCoarse.c60, m.xCoarse.c120});
}

Report signal6Report(const Measurement &m)
{
    return filled(Kind::Signal6, {m.qualityX, m.qualityY, m.quality, m.minimumQuality, m.maximumQuality,
                                  m.risesX % 1000, m.risesX, m.risesY % 1000, m.risesY});
}

Report phaseReport(const Measurement &m)
{
    return filled(Kind::Phase,
                  {m.xFine.c0,     m.xFine.c60,        m.xFine.c120,       m.xCoarse.c0,
                   m.xCoarse.c60,  m.xCoarse.c120,     m.yFine.c0,         m.yFine.c60,
                   m.yFine.c120,   m.yCoarse.c0,       m.yCoarse.c60,      m.yCoarse.c120,
                   m.integrations, m.integrations + 1, m.integrations / 2, m.integrations / 2 + 1,
                   m.qualityX,     m.qualityY,         m.offset.c0,        m.offset.c60,
                   m.offset.c120});
}

Report penIdentityReport(const Measurement &m)
{
    return filled(Kind::PenIdentity, {m.studentWrites, m.quality, m.pen.buttons});
}

Report dualPenReport(const Measurement &m)
{
    return filled(Kind::DualPen, {1, whole(m.pen.x), whole(m.pen.y), flagsOf(m.pen), whole(m.secondPen.x),
                                  whole(m.secondPen.y), flagsOf(m.secondPen)});
}

Report positionReport(const Measurement &m)
{
    const std::int64_t x = whole(m.pen.x);
    const std::int64_t y = whole(m.pen.y);
    const auto drive = static_cast<std::int64_t>(255 * m.pen.strength);
    return filled(Kind::Position, {m.quality, static_cast<std::int64_t>(100 * m.pen.strength), x, y,
                                   x % finePitch, y % finePitch, x / finePitch, y / finePitch, drive,
                                   x / finePitch % 2, drive, y / finePitch % 2});
}

Report adcReport(const Measurement &m)
{
    return filled(Kind::Adc, {m.adcRaw});
}

using Encoder = Report (*)(const Measurement &);

constexpr Encoder encoders[layoutKindCount] = {
    signal1Report, signal2Report,     signal3Report, signal4Report,  signal5Report, signal6Report,
    phaseReport,   penIdentityReport, dualPenReport, positionReport, adcReport,
};

} // namespace

Report encode(Kind kind, const Measurement &measurement)
{
    return encoders[static_cast<std::size_t>(kind)](measurement);
}

Report textReport(Type type, std::string_view text)
{
    Report report(textOffset + text.size());
    write(reportLength, static_cast<std::int64_t>(std::min<std::size_t>(report.size(), 255)), report.data());
    write(reportType, type, report.data());
    std::copy(text.begin(), text.end(), report.begin() + textOffset);
    return report;
}
