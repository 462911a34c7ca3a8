#pragma once

#include <cctype>

#include "monitor/reports/reportformats.h"

/// The rows of text that the monitor makes of reports: a format, and the fields that fill its placeholders.
namespace rows {

/// A byte as rows show it: itself when the process's character classification can print it, otherwise a dot.
inline char printable(unsigned char byte)
{
    return std::isprint(byte) ? static_cast<char>(byte) : '.';
}

/// A field and the width to which its decimal value is padded with blanks on the left; a wider value is
/// never cut.
struct Column
{
    reports::Field field;
    int width;
};

/// Placeholders "%1", "%2", ... are filled by the columns in their order.
struct Text
{
    const char *format = "";
    const Column *columns = nullptr;
    std::size_t columnCount = 0;
};

template <std::size_t Count>
constexpr Text text(const char *format, const Column (&columns)[Count])
{
    return {format, columns, Count};
}

inline constexpr Column signal1FineColumns[] = {
    {reports::signal1::xFine0, 5}, {reports::signal1::xFine60, 5}, {reports::signal1::xFine120, 5},
    {reports::signal1::yFine0, 5}, {reports::signal1::yFine60, 5}, {reports::signal1::yFine120, 5},
};
inline constexpr Column signal1CoarseColumns[] = {
    {reports::signal1::xCoarse0, 5},     {reports::signal1::xCoarse60, 5}, {reports::signal1::xCoarse120, 5},
    {reports::signal1::yCoarse0, 5},     {reports::signal1::yCoarse60, 5}, {reports::signal1::yCoarse120, 5},
    {reports::signal1::frequencyRaw, 5},
};
inline constexpr Column signal2Columns[] = {
    {reports::signal2::raw0, 5},         {reports::signal2::raw60, 5}, {reports::signal2::raw120, 5},
    {reports::signal2::integrations, 3}, {reports::signal2::norm0, 5}, {reports::signal2::norm60, 5},
    {reports::signal2::norm120, 5},
};
inline constexpr Column signal3Columns[] = {
    {reports::signal3::qualityFlag, 2},    {reports::signal3::qualityPass, 2},
    {reports::signal3::averageQuality, 5}, {reports::signal3::minimumQuality, 5},
    {reports::signal3::maximumQuality, 5},
};
inline constexpr Column signal4Columns[] = {
    {reports::signal4::integrator0, 5},
    {reports::signal4::integrator60, 5},
    {reports::signal4::integrator120, 5},
    {reports::signal4::integrations, 3},
};
inline constexpr Column signal5Columns[] = {
    {reports::signal5::integrator0, 5},   {reports::signal5::integrator60, 5},
    {reports::signal5::integrator120, 5}, {reports::signal5::integrations, 3},
    {reports::signal5::norm0, 5},         {reports::signal5::norm60, 5},
    {reports::signal5::norm120, 5},
};
inline constexpr Column signal6Columns[] = {
    {reports::signal6::qualityX, 5},       {reports::signal6::qualityY, 5},
    {reports::signal6::qualityAverage, 5}, {reports::signal6::qualityMinimum, 5},
    {reports::signal6::qualityMaximum, 5}, {reports::signal6::riseX, 5},
    {reports::signal6::fullX, 10},         {reports::signal6::riseY, 5},
    {reports::signal6::fullY, 10},
};
inline constexpr Column phaseColumns[] = {
    {reports::phase::xRs0, 5},   {reports::phase::xRs60, 5},   {reports::phase::xRs120, 5},
    {reports::phase::xFull0, 5}, {reports::phase::xFull60, 5}, {reports::phase::xFull120, 5},
    {reports::phase::yRs0, 5},   {reports::phase::yRs60, 5},   {reports::phase::yRs120, 5},
    {reports::phase::yFull0, 5}, {reports::phase::yFull60, 5}, {reports::phase::yFull120, 5},
};
inline constexpr Column phaseCountColumns[] = {
    {reports::phase::xRsCount, 3},  {reports::phase::yRsCount, 3},   {reports::phase::xFnCount, 3},
    {reports::phase::yFnCount, 3},  {reports::phase::xQuality, 5},   {reports::phase::yQuality, 5},
    {reports::phase::dcOffset0, 5}, {reports::phase::dcOffset60, 5}, {reports::phase::dcOffset120, 5},
};
inline constexpr Column penIdentityColumns[] = {
    {reports::penIdentity::quality, 8},
    {reports::penIdentity::buttons, 8},
};
// Both pens are shown under the first pen's number, on purpose.
inline constexpr Column dualPenColumns[] = {
    {reports::dualPen::penNumber, 2}, {reports::dualPen::pen1X, 8},     {reports::dualPen::pen1Y, 8},
    {reports::dualPen::pen1Flags, 8}, {reports::dualPen::penNumber, 2}, {reports::dualPen::pen2X, 8},
    {reports::dualPen::pen2Y, 8},     {reports::dualPen::pen2Flags, 8},
};
inline constexpr Column positionColumns[] = {
    {reports::position::quality, 5},
    {reports::position::proximity, 5},
    {reports::position::x, 8},
    {reports::position::y, 8},
    {reports::position::fineX, 5},
    {reports::position::fineY, 5},
    {reports::position::xPitchNumber, 5},
    {reports::position::yPitchNumber, 5},
    {reports::position::driveX, 5},
    {reports::position::polarityX, 5},
    {reports::position::driveY, 5},
    {reports::position::polarityY, 5},
};

/// The one row that is made of two texts: signal1Coarse follows directly.
inline constexpr std::uint8_t signal1SubType = 1;
inline constexpr Text signal1Fine =
    text("X Fine 0: %1   60: %2   120: %3 / Y Fine  0: %4   60 %5   120: %6", signal1FineColumns);
inline constexpr Text signal1Coarse = text(
    " / X Crse 0: %1   60: %2   120: %3 / Y Crse  0: %4   60 %5   120: %6 / Freq %7", signal1CoarseColumns);

/// The third placeholder is the pen's name.
inline constexpr Text penIdentity = text("Q:       %1     Button:     %2 Pen:        %3", penIdentityColumns);

/// No blank stands between the reading and "Voltage", on purpose.
inline constexpr char adcFormat[] = "Raw ADC: %1Voltage: %2V";

/// What a row shows, and what is logged as its second line.
struct Row
{
    reports::Type type;
    int subType; ///< of a SignalReport; anySubType for the others
    Text first;
    Text second = {};
};

inline constexpr int anySubType = -1;

/// The rows that fields alone make up.
inline constexpr Row fieldRows[] = {
    {reports::SignalReport, 2,
     text("Raw 0: %1   60: %2   120: %3 / Integs: %4/ Norm 0: %5   60 %6   120: %7", signal2Columns)},
    {reports::SignalReport, 3, text("Q: Flag %1 Pass %2 AvQ %3 MinQ %4 MaxQ %5", signal3Columns)},
    {reports::SignalReport, 4, text("0: %1  60: %2  120: %3  Integs: %4", signal4Columns)},
    {reports::SignalReport, 5,
     text("0: %1  60: %2  120: %3  Integs: %4 / Norm 0: %5  60: %6  120: %7", signal5Columns)},
    {reports::SignalReport, 6,
     text("Q: X %1 Y %2 Avg %3 Min %4 Max %5, Rise/Full X %6 / %7   Y %8 / %9", signal6Columns)},
    {reports::PhaseReport, anySubType,
     text("X Rs 0: %1  60: %2  120: %3 X Full 0: %4  60: %5  120: %6  Y Rs 0: %7  60: %8  120: %9 "
          "Y Full 0: %10  60: %11  120: %12  ",
          phaseColumns),
     text("X Rs Num: %1  Y Rs Num: %2   X Fn Num %3 Y Fn Num %4   X Q: %5 Y Q: %6   "
          "DC Offsets: 0: %7  60: %8  120 %9",
          phaseCountColumns)},
    {reports::DualPenReport, anySubType,
     text("Pen %1: X: %2 Y: %3 Flag %4,  Pen %5: X: %6 Y: %7 Flag %8", dualPenColumns)},
    {reports::PositionReport, anySubType,
     text("Q: %1  Px: %2 X: %3 Y: %4 Fine X: %5   Fine Y: %6   XPitchNo: %7 YPitchNo: %8  "
          "DriveX: %9 PolX: %10 DriveY: %11 PolY: %12",
          positionColumns)},
};

} // namespace rows
