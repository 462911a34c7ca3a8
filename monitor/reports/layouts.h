#pragma once

#include <string_view>

#include "field.h"
#include "rowtext.h"

/// The reports that boards send: for each kind its fields and its row of text.
///
/// This is the one place where a byte index or a row text is written. The monitor, the bar graph, the
/// simulator and the documentation use it. Bytes that no field names are not read.
namespace reports {

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

enum class RateLimit : std::uint8_t
{
    Limited,  ///< dropped when too soon after a report that restarted the clock; otherwise kept
              ///< and restarts it
    Restarts, ///< always kept; restarts the clock
    None,     ///< always kept; leaves the clock alone
};

/// What holds for all reports of a type.
struct TypeRule
{
    const char *name;
    Type type;
    RateLimit rateLimit;
    bool hasLengthRule; ///< the length byte must be the sent length of one of the type's layouts
};

/// The types that are decoded. Any other report is shown raw and is not rate-limited.
inline constexpr TypeRule typeRules[] = {
    {"SignalReport", SignalReport, RateLimit::Limited, true},
    {"TextReport", TextReport, RateLimit::Restarts, false},
    {"PhaseReport", PhaseReport, RateLimit::Limited, true},
    {"TextReport", TextOrAdcReport, RateLimit::None, false},
    {"PenIdentityReport", PenIdentityReport, RateLimit::Limited, false},
    {"DualPenReport", DualPenReport, RateLimit::Limited, false},
    {"PositionReport", PositionReport, RateLimit::Limited, false},
};

/// Not constexpr, so that looking up a missing field in a constant expression is a compile error.
[[noreturn]] void noSuchField();
/// The same for a field that ends behind the length that boards send.
[[noreturn]] void fieldIsBehindTheReport();

/// One kind of report with fields, in the order of their bytes.
struct Layout
{
    template <std::size_t Count>
    constexpr Layout(const char *layoutName, const char *reportName, Type typeByte, int subTypeByte,
                     int length, const Field (&layoutFields)[Count], const char *firstText,
                     const char *secondText = "")
        : name(layoutName)
        , report(reportName)
        , type(typeByte)
        , subType(static_cast<std::uint8_t>(subTypeByte))
        , sentLength(static_cast<std::uint8_t>(length))
        , fields(layoutFields)
        , fieldCount(Count)
        , first(firstText, layoutFields)
        , second(secondText, layoutFields)
    {
        for (const Field &field : layoutFields) {
            if (field.offset + widthInBytes(field) > sentLength)
                fieldIsBehindTheReport();
        }
    }

    /// The field of this name. To be used in constant expressions, where the name is checked.
    constexpr const Field &operator[](std::string_view fieldName) const
    {
        for (std::size_t i = 0; i < fieldCount; ++i) {
            if (fieldName == fields[i].name)
                return fields[i];
        }
        noSuchField();
    }

    const char *name; ///< as scenarios of the simulator name it
    const char *report;
    Type type;
    std::uint8_t subType;    ///< 0 for a type without sub-types
    std::uint8_t sentLength; ///< number of bytes that boards send, and value of the length byte
    const Field *fields;
    std::size_t fieldCount;
    RowText first;  ///< what a row shows
    RowText second; ///< what a row shows behind it, and what is logged as a line of its own; mostly empty
};

/// Fine and coarse phase signals. The two words before them are kept by the bar graph and shown nowhere.
inline constexpr Field signal1Fields[] = {
    {"reportWord8", "", 8, Width::Two, Unsigned},
    {"reportWord10", "", 10, Width::Two, Unsigned},
    {"xFine0", "X Fine 0", 13, Width::Two, Signed},
    {"xFine60", "X Fine 60", 15, Width::Two, Signed},
    {"xFine120", "X Fine 120", 17, Width::Two, Signed},
    {"yFine0", "Y Fine 0", 19, Width::Two, Signed},
    {"yFine60", "Y Fine 60", 21, Width::Two, Signed},
    {"yFine120", "Y Fine 120", 23, Width::Two, Signed},
    {"xCoarse0", "X Crse 0", 25, Width::Two, Signed},
    {"xCoarse60", "X Crse 60", 27, Width::Two, Signed},
    {"xCoarse120", "X Crse 120", 29, Width::Two, Signed},
    {"yCoarse0", "Y Crse 0", 31, Width::Two, Signed},
    {"yCoarse60", "Y Crse 60", 33, Width::Two, Signed},
    {"yCoarse120", "Y Crse 120", 35, Width::Two, Signed},
    {"frequencyRaw", "Freq", 37, Width::Two, Signed},
};
inline constexpr Layout signal1{
    "signal-1",
    "SignalReport",
    SignalReport,
    1,
    40,
    signal1Fields,
    "X Fine 0: {xFine0:5}   60: {xFine60:5}   120: {xFine120:5} / "
    "Y Fine  0: {yFine0:5}   60 {yFine60:5}   120: {yFine120:5} / "
    "X Crse 0: {xCoarse0:5}   60: {xCoarse60:5}   120: {xCoarse120:5} / "
    "Y Crse  0: {yCoarse0:5}   60 {yCoarse60:5}   120: {yCoarse120:5} / Freq {frequencyRaw:5}"};

/// Raw and normalised integrator outputs.
inline constexpr Field signal2Fields[] = {
    {"raw0", "Raw 0", 13, Width::Two, Signed},       {"raw60", "Raw 60", 15, Width::Two, Signed},
    {"raw120", "Raw 120", 17, Width::Two, Signed},   {"integrations", "Integs", 20, Width::One, Unsigned},
    {"norm0", "Norm 0", 22, Width::Two, Signed},     {"norm60", "Norm 60", 24, Width::Two, Signed},
    {"norm120", "Norm 120", 26, Width::Two, Signed},
};
inline constexpr Layout signal2{
    "signal-2",
    "SignalReport",
    SignalReport,
    2,
    40,
    signal2Fields,
    "Raw 0: {raw0:5}   60: {raw60:5}   120: {raw120:5} / Integs: {integrations:3}/ "
    "Norm 0: {norm0:5}   60 {norm60:5}   120: {norm120:5}"};

/// Summary of the signal quality. The three qualities have slots of three bytes each.
inline constexpr Field signal3Fields[] = {
    {"qualityFlag", "Flag", 3, Width::One, Unsigned},   {"qualityPass", "Pass", 4, Width::One, Unsigned},
    {"averageQuality", "AvQ", 6, Width::Two, Signed},   {"minimumQuality", "MinQ", 9, Width::Two, Signed},
    {"maximumQuality", "MaxQ", 12, Width::Two, Signed},
};
inline constexpr Layout signal3{
    "signal-3",
    "SignalReport",
    SignalReport,
    3,
    14,
    signal3Fields,
    "Q: Flag {qualityFlag:2} Pass {qualityPass:2} AvQ {averageQuality:5} MinQ {minimumQuality:5} "
    "MaxQ {maximumQuality:5}"};

/// Integrator outputs.
inline constexpr Field signal4Fields[] = {
    {"integrator0", "0", 3, Width::Two, Signed},
    {"integrator60", "60", 5, Width::Two, Signed},
    {"integrator120", "120", 7, Width::Two, Signed},
    {"integrations", "Integs", 9, Width::One, Unsigned},
};
inline constexpr Layout signal4{
    "signal-4",
    "SignalReport",
    SignalReport,
    4,
    10,
    signal4Fields,
    "0: {integrator0:5}  60: {integrator60:5}  120: {integrator120:5}  Integs: {integrations:3}"};

/// Integrator and normalised outputs.
inline constexpr Field signal5Fields[] = {
    {"integrator0", "0", 3, Width::Two, Signed},     {"integrator60", "60", 5, Width::Two, Signed},
    {"integrator120", "120", 7, Width::Two, Signed}, {"integrations", "Integs", 9, Width::One, Unsigned},
    {"norm0", "Norm 0", 10, Width::Two, Signed},     {"norm60", "Norm 60", 12, Width::Two, Signed},
    {"norm120", "Norm 120", 14, Width::Two, Signed},
};
inline constexpr Layout signal5{
    "signal-5",
    "SignalReport",
    SignalReport,
    5,
    16,
    signal5Fields,
    "0: {integrator0:5}  60: {integrator60:5}  120: {integrator120:5}  Integs: {integrations:3} / "
    "Norm 0: {norm0:5}  60: {norm60:5}  120: {norm120:5}"};

/// Quality, with rise and full-scale counters.
inline constexpr Field signal6Fields[] = {
    {"qualityX", "Q: X", 3, Width::Two, Signed},
    {"qualityY", "Y", 5, Width::Two, Signed},
    {"qualityAverage", "Avg", 7, Width::Two, Signed},
    {"qualityMinimum", "Min", 9, Width::Two, Signed},
    {"qualityMaximum", "Max", 11, Width::Two, Signed},
    {"riseX", "Rise/Full X (first)", 13, Width::Two, Unsigned},
    {"fullX", "Rise/Full X (second)", 15, Width::Four, Unsigned},
    {"riseY", "Y (first)", 19, Width::Two, Unsigned},
    {"fullY", "Y (second)", 21, Width::Four, Unsigned},
};
inline constexpr Layout signal6{
    "signal-6",
    "SignalReport",
    SignalReport,
    6,
    25,
    signal6Fields,
    "Q: X {qualityX:5} Y {qualityY:5} Avg {qualityAverage:5} Min {qualityMinimum:5} "
    "Max {qualityMaximum:5}, Rise/Full X {riseX:5} / {fullX:10}   Y {riseY:5} / {fullY:10}"};

/// The first twelve values are big-endian, the rest little-endian: the mix is part of the format.
inline constexpr Field phaseFields[] = {
    {"xRs0", "X Rs 0", 2, Width::Two, Signed, BigEndian},
    {"xRs60", "X Rs 60", 4, Width::Two, Signed, BigEndian},
    {"xRs120", "X Rs 120", 6, Width::Two, Signed, BigEndian},
    {"xFull0", "X Full 0", 8, Width::Two, Signed, BigEndian},
    {"xFull60", "X Full 60", 10, Width::Two, Signed, BigEndian},
    {"xFull120", "X Full 120", 12, Width::Two, Signed, BigEndian},
    {"yRs0", "Y Rs 0", 14, Width::Two, Signed, BigEndian},
    {"yRs60", "Y Rs 60", 16, Width::Two, Signed, BigEndian},
    {"yRs120", "Y Rs 120", 18, Width::Two, Signed, BigEndian},
    {"yFull0", "Y Full 0", 20, Width::Two, Signed, BigEndian},
    {"yFull60", "Y Full 60", 22, Width::Two, Signed, BigEndian},
    {"yFull120", "Y Full 120", 24, Width::Two, Signed, BigEndian},
    {"xRsCount", "X Rs Num", 26, Width::One, Unsigned},
    {"yRsCount", "Y Rs Num", 27, Width::One, Unsigned},
    {"xFnCount", "X Fn Num", 28, Width::One, Unsigned},
    {"yFnCount", "Y Fn Num", 29, Width::One, Unsigned},
    {"xQuality", "X Q", 30, Width::Two, Signed},
    {"yQuality", "Y Q", 32, Width::Two, Signed},
    {"dcOffset0", "DC Offsets 0", 34, Width::Two, Signed},
    {"dcOffset60", "DC Offsets 60", 36, Width::Two, Signed},
    {"dcOffset120", "DC Offsets 120", 38, Width::Two, Signed},
};
inline constexpr Layout phase{
    "phase",
    "PhaseReport",
    PhaseReport,
    0,
    40,
    phaseFields,
    "X Rs 0: {xRs0:5}  60: {xRs60:5}  120: {xRs120:5} X Full 0: {xFull0:5}  60: {xFull60:5}  "
    "120: {xFull120:5}  Y Rs 0: {yRs0:5}  60: {yRs60:5}  120: {yRs120:5} Y Full 0: {yFull0:5}  "
    "60: {yFull60:5}  120: {yFull120:5}  ",
    "X Rs Num: {xRsCount:3}  Y Rs Num: {yRsCount:3}   X Fn Num {xFnCount:3} Y Fn Num {yFnCount:3}   "
    "X Q: {xQuality:5} Y Q: {yQuality:5}   "
    "DC Offsets: 0: {dcOffset0:5}  60: {dcOffset60:5}  120 {dcOffset120:5}"};

/// Which pen is in use, and its buttons.
inline constexpr NamedValue penKinds[] = {{0, VALUE_NAME("monitor", "Teacher")},
                                          {1, VALUE_NAME("monitor", "Student")}};
inline constexpr ValueNames penKindNames{penKinds, 2, VALUE_NAME("monitor", "Unknown: %1")};
inline constexpr Field penIdentityFields[] = {
    {"penKind", "Pen", 3, Width::Two, Unsigned, LittleEndian, 0xFFFFFFFF, &penKindNames},
    {"quality", "Q", 5, Width::Two, Signed},
    {"buttons", "Button", 7, Width::Two, Signed},
};
inline constexpr Layout penIdentity{"pen-identity",
                                    "PenIdentityReport",
                                    PenIdentityReport,
                                    0,
                                    9,
                                    penIdentityFields,
                                    "Q:       {quality:8}     Button:     {buttons:8} Pen:        {penKind}"};

/// Two pens at once. The second pen has no number of its own: both are shown under the first, on purpose.
inline constexpr Field dualPenFields[] = {
    {"penNumber", "Pen", 2, Width::Two, Unsigned},
    {"pen1X", "first pen X", 4, Width::Four, Signed},
    {"pen1Y", "first pen Y", 8, Width::Four, Signed},
    {"pen1Flags", "first pen Flag", 12, Width::Two, Unsigned},
    {"pen2X", "second pen X", 16, Width::Four, Signed},
    {"pen2Y", "second pen Y", 20, Width::Four, Signed},
    {"pen2Flags", "second pen Flag", 24, Width::Two, Unsigned},
};
inline constexpr Layout dualPen{"dual-pen",
                                "DualPenReport",
                                DualPenReport,
                                0,
                                26,
                                dualPenFields,
                                "Pen {penNumber:2}: X: {pen1X:8} Y: {pen1Y:8} Flag {pen1Flags:8},  "
                                "Pen {penNumber:2}: X: {pen2X:8} Y: {pen2Y:8} Flag {pen2Flags:8}"};

/// Position of the pen, and what it follows from.
inline constexpr Field positionFields[] = {
    {"quality", "Q", 3, Width::Two, Unsigned},
    {"proximity", "Px", 5, Width::Two, Unsigned},
    {"x", "X", 7, Width::Four, Signed},
    {"y", "Y", 11, Width::Four, Signed},
    {"fineX", "Fine X", 15, Width::Two, Unsigned},
    {"fineY", "Fine Y", 17, Width::Two, Unsigned},
    {"xPitchNumber", "XPitchNo", 19, Width::Two, Unsigned},
    {"yPitchNumber", "YPitchNo", 21, Width::Two, Unsigned},
    {"driveX", "DriveX", 23, Width::Two, Unsigned},
    {"polarityX", "PolX", 25, Width::Two, Unsigned},
    {"driveY", "DriveY", 27, Width::Two, Unsigned},
    {"polarityY", "PolY", 29, Width::Two, Unsigned},
};
inline constexpr Layout position{
    "position",
    "PositionReport",
    PositionReport,
    0,
    31,
    positionFields,
    "Q: {quality:5}  Px: {proximity:5} X: {x:8} Y: {y:8} Fine X: {fineX:5}   Fine Y: {fineY:5}   "
    "XPitchNo: {xPitchNumber:5} YPitchNo: {yPitchNumber:5}  "
    "DriveX: {driveX:5} PolX: {polarityX:5} DriveY: {driveY:5} PolY: {polarityY:5}"};

/// A 10-bit reading of the converter: byte 3 holds the low eight bits (`adcLow`), bits 0 and 1 of byte 4 the
/// high ones (`adcHigh`). A type-119 report with an ADC length byte and this sub-type; any other is text.
inline constexpr Scale adcVolts{4.88, 1000, "V"};
inline constexpr Field adcFields[] = {
    {"adcRaw", "Raw ADC", 3, Width::Two, Unsigned, LittleEndian, 0x03FF},
    {"volts", "Voltage", 3, Width::Two, Unsigned, LittleEndian, 0x03FF, nullptr, &adcVolts},
};
// Without a blank between the reading and "Voltage", on purpose.
inline constexpr Layout adc{
    "adc", "AdcReport", TextOrAdcReport, 12, 52, adcFields, "Raw ADC: {adcRaw}Voltage: {volts}V"};

inline constexpr const Layout *layouts[] = {&signal1, &signal2,     &signal3, &signal4,  &signal5, &signal6,
                                            &phase,   &penIdentity, &dualPen, &position, &adc};

/// Whether a report of type 119 with this length byte may be an AdcReport.
constexpr bool isAdcLength(std::int64_t length)
{
    return length == adc.sentLength || length == 58;
}

/// Index of the first character of a TextReport.
inline constexpr std::size_t textOffset = 2;

/// Frequency in hertz of a signal report's frequency word, truncated toward zero.
constexpr std::int64_t frequencyOf(std::int64_t frequencyRaw)
{
    return frequencyRaw * 225 / 4;
}

} // namespace reports
