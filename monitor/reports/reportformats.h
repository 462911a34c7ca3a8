#pragma once

#include <cstddef>
#include <cstdint>

/// The reports that boards send: where each field stands, how wide it is and how it is read.
///
/// This is the one place where a byte index is written. The rows of text, the bar graph, the simulator
/// and the documentation walk these tables. Nothing here needs Qt. All indices count from the report's
/// first byte; bytes that no table names are not read.
namespace reports {

enum class Width : std::uint8_t
{
    One = 1,
    Two = 2,
    Four = 4,
};

enum Sign : std::uint8_t
{
    Unsigned,
    Signed,
};

enum ByteOrder : std::uint8_t
{
    LittleEndian,
    BigEndian,
};

struct Field
{
    const char *name;
    const char *label;
    std::uint8_t offset; ///< index of the first byte
    Width width;
    Sign sign;
    ByteOrder order = LittleEndian;
    std::uint32_t mask = 0xFFFFFFFF; ///< the bits of the value that count
};

/// A report's bytes as they came. A byte that is not there reads as zero.
struct Bytes
{
    const unsigned char *data;
    std::size_t length;

    constexpr std::uint8_t at(std::size_t index) const
    {
        return index < length ? data[index] : std::uint8_t{0};
    }
};

constexpr unsigned widthInBytes(const Field &field)
{
    return static_cast<unsigned>(field.width);
}

/// Index of the byte that holds bits 8 * significance and up of the field's value.
constexpr unsigned byteIndex(const Field &field, unsigned significance)
{
    return field.order == LittleEndian ? field.offset + significance
                                       : field.offset + widthInBytes(field) - 1 - significance;
}

/// Value of a field, sign-extended when the field is signed.
constexpr std::int64_t read(const Field &field, const Bytes &bytes)
{
    std::uint32_t raw = 0;
    for (unsigned i = 0; i < widthInBytes(field); ++i)
        raw |= std::uint32_t{bytes.at(byteIndex(field, i))} << (8 * i);
    raw &= field.mask;
    if (field.sign == Unsigned)
        return raw;
    const std::int64_t span = std::int64_t{1} << (8 * widthInBytes(field));
    return raw >= static_cast<std::uint64_t>(span / 2) ? raw - span : raw;
}

/// Puts the low bits of a value where read() finds them; bits outside the field's mask stay as they are.
/// \param data at least `field.offset` + width bytes
constexpr void write(const Field &field, std::int64_t value, unsigned char *data)
{
    for (unsigned i = 0; i < widthInBytes(field); ++i) {
        const auto mask = static_cast<std::uint8_t>(field.mask >> (8 * i));
        const auto bits = static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> (8 * i));
        unsigned char &byte = data[byteIndex(field, i)];
        byte = static_cast<unsigned char>((byte & ~mask) | (bits & mask));
    }
}

// The header of every report.

inline constexpr Field reportLength{"reportLength", "", 0, Width::One, Unsigned};
inline constexpr Field reportType{"reportType", "", 1, Width::One, Unsigned};
inline constexpr Field reportSubType{"reportSubType", "", 2, Width::One, Unsigned};

enum Type : std::uint8_t
{
    SignalReport = 47,
    TextReport = 50,
    PhaseReport = 104,
    TextOrAdcReport = 119,
    PenIdentityReport = 162,
    DualPenReport = 163,
    PositionReport = 164,
};

/// The length byte of every PhaseReport.
inline constexpr std::uint8_t phaseReportLength = 40;
inline constexpr std::uint8_t adcSubType = 12;

/// Whether a report of type 119 with this length byte may be an AdcReport.
constexpr bool isAdcLength(std::int64_t length)
{
    return length == 52 || length == 58;
}

/// Index of the first character of a TextReport.
inline constexpr std::size_t textOffset = 2;

/// SignalReport, sub-type 1: fine and coarse phase signals. The two words before them are kept by the bar
/// graph and shown nowhere.
namespace signal1 {
inline constexpr Field reportWord8{"reportWord8", "", 8, Width::Two, Unsigned};
inline constexpr Field reportWord10{"reportWord10", "", 10, Width::Two, Unsigned};
inline constexpr Field xFine0{"xFine0", "X Fine 0", 13, Width::Two, Signed};
inline constexpr Field xFine60{"xFine60", "X Fine 60", 15, Width::Two, Signed};
inline constexpr Field xFine120{"xFine120", "X Fine 120", 17, Width::Two, Signed};
inline constexpr Field yFine0{"yFine0", "Y Fine 0", 19, Width::Two, Signed};
inline constexpr Field yFine60{"yFine60", "Y Fine 60", 21, Width::Two, Signed};
inline constexpr Field yFine120{"yFine120", "Y Fine 120", 23, Width::Two, Signed};
inline constexpr Field xCoarse0{"xCoarse0", "X Crse 0", 25, Width::Two, Signed};
inline constexpr Field xCoarse60{"xCoarse60", "X Crse 60", 27, Width::Two, Signed};
inline constexpr Field xCoarse120{"xCoarse120", "X Crse 120", 29, Width::Two, Signed};
inline constexpr Field yCoarse0{"yCoarse0", "Y Crse 0", 31, Width::Two, Signed};
inline constexpr Field yCoarse60{"yCoarse60", "Y Crse 60", 33, Width::Two, Signed};
inline constexpr Field yCoarse120{"yCoarse120", "Y Crse 120", 35, Width::Two, Signed};
inline constexpr Field frequencyRaw{"frequencyRaw", "Freq", 37, Width::Two, Signed};
inline constexpr Field fields[] = {reportWord8, reportWord10, xFine0,    xFine60,    xFine120,
                                   yFine0,      yFine60,      yFine120,  xCoarse0,   xCoarse60,
                                   xCoarse120,  yCoarse0,     yCoarse60, yCoarse120, frequencyRaw};
} // namespace signal1

/// SignalReport, sub-type 2: raw and normalised integrator outputs.
namespace signal2 {
inline constexpr Field raw0{"raw0", "Raw 0", 13, Width::Two, Signed};
inline constexpr Field raw60{"raw60", "Raw 60", 15, Width::Two, Signed};
inline constexpr Field raw120{"raw120", "Raw 120", 17, Width::Two, Signed};
inline constexpr Field integrations{"integrations", "Integs", 20, Width::One, Unsigned};
inline constexpr Field norm0{"norm0", "Norm 0", 22, Width::Two, Signed};
inline constexpr Field norm60{"norm60", "Norm 60", 24, Width::Two, Signed};
inline constexpr Field norm120{"norm120", "Norm 120", 26, Width::Two, Signed};
inline constexpr Field fields[] = {raw0, raw60, raw120, integrations, norm0, norm60, norm120};
} // namespace signal2

/// SignalReport, sub-type 3: summary of the signal quality. The three qualities stand in slots of three
/// bytes.
namespace signal3 {
inline constexpr Field qualityFlag{"qualityFlag", "Flag", 3, Width::One, Unsigned};
inline constexpr Field qualityPass{"qualityPass", "Pass", 4, Width::One, Unsigned};
inline constexpr Field averageQuality{"averageQuality", "AvQ", 6, Width::Two, Signed};
inline constexpr Field minimumQuality{"minimumQuality", "MinQ", 9, Width::Two, Signed};
inline constexpr Field maximumQuality{"maximumQuality", "MaxQ", 12, Width::Two, Signed};
inline constexpr Field fields[] = {qualityFlag, qualityPass, averageQuality, minimumQuality, maximumQuality};
} // namespace signal3

/// SignalReport, sub-type 4: integrator outputs.
namespace signal4 {
inline constexpr Field integrator0{"integrator0", "0", 3, Width::Two, Signed};
inline constexpr Field integrator60{"integrator60", "60", 5, Width::Two, Signed};
inline constexpr Field integrator120{"integrator120", "120", 7, Width::Two, Signed};
inline constexpr Field integrations{"integrations", "Integs", 9, Width::One, Unsigned};
inline constexpr Field fields[] = {integrator0, integrator60, integrator120, integrations};
} // namespace signal4

/// SignalReport, sub-type 5: integrator and normalised outputs.
namespace signal5 {
inline constexpr Field integrator0{"integrator0", "0", 3, Width::Two, Signed};
inline constexpr Field integrator60{"integrator60", "60", 5, Width::Two, Signed};
inline constexpr Field integrator120{"integrator120", "120", 7, Width::Two, Signed};
inline constexpr Field integrations{"integrations", "Integs", 9, Width::One, Unsigned};
inline constexpr Field norm0{"norm0", "Norm 0", 10, Width::Two, Signed};
inline constexpr Field norm60{"norm60", "Norm 60", 12, Width::Two, Signed};
inline constexpr Field norm120{"norm120", "Norm 120", 14, Width::Two, Signed};
inline constexpr Field fields[] = {integrator0, integrator60, integrator120, integrations,
                                   norm0,       norm60,       norm120};
} // namespace signal5

/// SignalReport, sub-type 6: quality, with rise and full-scale counters.
namespace signal6 {
inline constexpr Field qualityX{"qualityX", "Q: X", 3, Width::Two, Signed};
inline constexpr Field qualityY{"qualityY", "Y", 5, Width::Two, Signed};
inline constexpr Field qualityAverage{"qualityAverage", "Avg", 7, Width::Two, Signed};
inline constexpr Field qualityMinimum{"qualityMinimum", "Min", 9, Width::Two, Signed};
inline constexpr Field qualityMaximum{"qualityMaximum", "Max", 11, Width::Two, Signed};
inline constexpr Field riseX{"riseX", "Rise/Full X (first)", 13, Width::Two, Unsigned};
inline constexpr Field fullX{"fullX", "Rise/Full X (second)", 15, Width::Four, Unsigned};
inline constexpr Field riseY{"riseY", "Y (first)", 19, Width::Two, Unsigned};
inline constexpr Field fullY{"fullY", "Y (second)", 21, Width::Four, Unsigned};
inline constexpr Field fields[] = {qualityX, qualityY, qualityAverage, qualityMinimum, qualityMaximum,
                                   riseX,    fullX,    riseY,          fullY};
} // namespace signal6

/// PhaseReport. The first twelve values are big-endian, the rest little-endian: the mix is part of the
/// format.
namespace phase {
inline constexpr Field xRs0{"xRs0", "X Rs 0", 2, Width::Two, Signed, BigEndian};
inline constexpr Field xRs60{"xRs60", "X Rs 60", 4, Width::Two, Signed, BigEndian};
inline constexpr Field xRs120{"xRs120", "X Rs 120", 6, Width::Two, Signed, BigEndian};
inline constexpr Field xFull0{"xFull0", "X Full 0", 8, Width::Two, Signed, BigEndian};
inline constexpr Field xFull60{"xFull60", "X Full 60", 10, Width::Two, Signed, BigEndian};
inline constexpr Field xFull120{"xFull120", "X Full 120", 12, Width::Two, Signed, BigEndian};
inline constexpr Field yRs0{"yRs0", "Y Rs 0", 14, Width::Two, Signed, BigEndian};
inline constexpr Field yRs60{"yRs60", "Y Rs 60", 16, Width::Two, Signed, BigEndian};
inline constexpr Field yRs120{"yRs120", "Y Rs 120", 18, Width::Two, Signed, BigEndian};
inline constexpr Field yFull0{"yFull0", "Y Full 0", 20, Width::Two, Signed, BigEndian};
inline constexpr Field yFull60{"yFull60", "Y Full 60", 22, Width::Two, Signed, BigEndian};
inline constexpr Field yFull120{"yFull120", "Y Full 120", 24, Width::Two, Signed, BigEndian};
inline constexpr Field xRsCount{"xRsCount", "X Rs Num", 26, Width::One, Unsigned};
inline constexpr Field yRsCount{"yRsCount", "Y Rs Num", 27, Width::One, Unsigned};
inline constexpr Field xFnCount{"xFnCount", "X Fn Num", 28, Width::One, Unsigned};
inline constexpr Field yFnCount{"yFnCount", "Y Fn Num", 29, Width::One, Unsigned};
inline constexpr Field xQuality{"xQuality", "X Q", 30, Width::Two, Signed};
inline constexpr Field yQuality{"yQuality", "Y Q", 32, Width::Two, Signed};
inline constexpr Field dcOffset0{"dcOffset0", "DC Offsets 0", 34, Width::Two, Signed};
inline constexpr Field dcOffset60{"dcOffset60", "DC Offsets 60", 36, Width::Two, Signed};
inline constexpr Field dcOffset120{"dcOffset120", "DC Offsets 120", 38, Width::Two, Signed};
inline constexpr Field fields[] = {xRs0,      xRs60,      xRs120,     xFull0,   xFull60,  xFull120,
                                   yRs0,      yRs60,      yRs120,     yFull0,   yFull60,  yFull120,
                                   xRsCount,  yRsCount,   xFnCount,   yFnCount, xQuality, yQuality,
                                   dcOffset0, dcOffset60, dcOffset120};
} // namespace phase

/// PenIdentityReport. `penKind` 0 is the teacher's pen, 1 a student's.
namespace penIdentity {
inline constexpr Field penKind{"penKind", "Pen", 3, Width::Two, Unsigned};
inline constexpr Field quality{"quality", "Q", 5, Width::Two, Signed};
inline constexpr Field buttons{"buttons", "Button", 7, Width::Two, Signed};
inline constexpr Field fields[] = {penKind, quality, buttons};
} // namespace penIdentity

/// DualPenReport. The second pen has no number of its own.
namespace dualPen {
inline constexpr Field penNumber{"penNumber", "Pen", 2, Width::Two, Unsigned};
inline constexpr Field pen1X{"pen1X", "first pen X", 4, Width::Four, Signed};
inline constexpr Field pen1Y{"pen1Y", "first pen Y", 8, Width::Four, Signed};
inline constexpr Field pen1Flags{"pen1Flags", "first pen Flag", 12, Width::Two, Unsigned};
inline constexpr Field pen2X{"pen2X", "second pen X", 16, Width::Four, Signed};
inline constexpr Field pen2Y{"pen2Y", "second pen Y", 20, Width::Four, Signed};
inline constexpr Field pen2Flags{"pen2Flags", "second pen Flag", 24, Width::Two, Unsigned};
inline constexpr Field fields[] = {penNumber, pen1X, pen1Y, pen1Flags, pen2X, pen2Y, pen2Flags};
} // namespace dualPen

/// PositionReport.
namespace position {
inline constexpr Field quality{"quality", "Q", 3, Width::Two, Unsigned};
inline constexpr Field proximity{"proximity", "Px", 5, Width::Two, Unsigned};
inline constexpr Field x{"x", "X", 7, Width::Four, Signed};
inline constexpr Field y{"y", "Y", 11, Width::Four, Signed};
inline constexpr Field fineX{"fineX", "Fine X", 15, Width::Two, Unsigned};
inline constexpr Field fineY{"fineY", "Fine Y", 17, Width::Two, Unsigned};
inline constexpr Field xPitchNumber{"xPitchNumber", "XPitchNo", 19, Width::Two, Unsigned};
inline constexpr Field yPitchNumber{"yPitchNumber", "YPitchNo", 21, Width::Two, Unsigned};
inline constexpr Field driveX{"driveX", "DriveX", 23, Width::Two, Unsigned};
inline constexpr Field polarityX{"polarityX", "PolX", 25, Width::Two, Unsigned};
inline constexpr Field driveY{"driveY", "DriveY", 27, Width::Two, Unsigned};
inline constexpr Field polarityY{"polarityY", "PolY", 29, Width::Two, Unsigned};
inline constexpr Field fields[] = {quality,      proximity,    x,      y,         fineX,  fineY,
                                   xPitchNumber, yPitchNumber, driveX, polarityX, driveY, polarityY};
} // namespace position

/// AdcReport: a 10-bit reading of the converter, 4.88 millivolts a step. A type-119 report with an ADC length
/// byte and this sub-type; any other is text.
namespace adc {
inline constexpr Field adcLow{"adcLow", "", 3, Width::One, Unsigned};
inline constexpr Field adcHigh{"adcHigh", "", 4, Width::One, Unsigned, LittleEndian, 0x03};
inline constexpr Field fields[] = {adcLow, adcHigh};

/// Reading of an AdcReport, 0 to 1023.
constexpr int adcRaw(const Bytes &bytes)
{
    return static_cast<int>(read(adcLow, bytes) + 256 * read(adcHigh, bytes));
}

/// Volts of a reading.
constexpr double volts(int raw)
{
    return raw * 4.88 / 1000;
}
} // namespace adc

/// One kind of report: its name, how it is told from the others, and its fields in the order of their bytes.
/// Text has no fields and stands in no layout.
struct Layout
{
    const char *report;
    Type type;
    std::uint8_t subType;    ///< 0 where the kind has none
    std::uint8_t sentLength; ///< number of bytes that boards send
    const Field *fields;
    std::size_t fieldCount;
};

template <std::size_t Count>
constexpr Layout layout(const char *report, Type type, std::uint8_t subType, std::uint8_t sentLength,
                        const Field (&fields)[Count])
{
    return {report, type, subType, sentLength, fields, Count};
}

inline constexpr Layout layouts[] = {
    layout("SignalReport", SignalReport, 1, 40, signal1::fields),
    layout("SignalReport", SignalReport, 2, 40, signal2::fields),
    layout("SignalReport", SignalReport, 3, 14, signal3::fields),
    layout("SignalReport", SignalReport, 4, 10, signal4::fields),
    layout("SignalReport", SignalReport, 5, 16, signal5::fields),
    layout("SignalReport", SignalReport, 6, 25, signal6::fields),
    layout("PhaseReport", PhaseReport, 0, phaseReportLength, phase::fields),
    layout("PenIdentityReport", PenIdentityReport, 0, 9, penIdentity::fields),
    layout("DualPenReport", DualPenReport, 0, 26, dualPen::fields),
    layout("PositionReport", PositionReport, 0, 31, position::fields),
    layout("AdcReport", TextOrAdcReport, adcSubType, 52, adc::fields),
};

/// Whether a SignalReport may have this length byte: it must be the extent of one of the sub-types.
constexpr bool isSignalLength(std::int64_t length)
{
    for (const Layout &candidate : layouts) {
        if (candidate.type == SignalReport && candidate.sentLength == length)
            return true;
    }
    return false;
}

} // namespace reports
