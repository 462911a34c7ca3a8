#pragma once

#include "layouts.h"

/// Which fields are drawn, and together.
namespace plots {

enum class What
{
    Path,
    Signals,
    Quality,
    Voltage,
    Rates,
};

inline constexpr std::size_t maxFieldsOfPanel = 5;

struct PanelField
{
    const char *name = nullptr; ///< in the legend; null behind the last
    const reports::Field *field = nullptr;
};

/// A picture of fields of one kind of report over time.
struct Panel
{
    What what;
    const reports::Layout *layout;
    const char *title;
    const char *axis;
    PanelField fields[maxFieldsOfPanel];
    std::int64_t (*convert)(std::int64_t value) = nullptr;
};

/// A pen's position in one kind of report.
struct PathFields
{
    const char *name;
    const reports::Layout *layout;
    const reports::Field *x, *y;
};

inline constexpr char signalAxis[] = "Signal (counts)";
inline constexpr char qualityAxis[] = "Quality (counts)";

#define PHASES(layout, prefix)                                                                               \
    {                                                                                                        \
        {"0°", &(layout)[prefix "0"]}, {"60°", &(layout)[prefix "60"]},                                      \
        {                                                                                                    \
            "120°", &(layout)[prefix "120"]                                                                  \
        }                                                                                                    \
    }

inline constexpr Panel panels[] = {
    {What::Signals, &reports::signal1, "X fine", signalAxis, PHASES(reports::signal1, "xFine")},
    {What::Signals, &reports::signal1, "Y fine", signalAxis, PHASES(reports::signal1, "yFine")},
    {What::Signals, &reports::signal1, "X coarse", signalAxis, PHASES(reports::signal1, "xCoarse")},
    {What::Signals, &reports::signal1, "Y coarse", signalAxis, PHASES(reports::signal1, "yCoarse")},
    {What::Signals,
     &reports::signal1,
     "Frequency",
     "Frequency (Hz)",
     {{"frequency", &reports::signal1["frequencyRaw"]}},
     reports::frequencyOf},
    {What::Signals, &reports::signal2, "Raw integrators", signalAxis, PHASES(reports::signal2, "raw")},
    {What::Signals, &reports::signal2, "Normalised integrators", signalAxis,
     PHASES(reports::signal2, "norm")},
    {What::Signals, &reports::signal4, "Integrators", signalAxis, PHASES(reports::signal4, "integrator")},
    {What::Signals, &reports::signal5, "Integrators", signalAxis, PHASES(reports::signal5, "integrator")},
    {What::Signals, &reports::signal5, "Normalised integrators", signalAxis,
     PHASES(reports::signal5, "norm")},
    {What::Signals, &reports::phase, "X Rs", signalAxis, PHASES(reports::phase, "xRs")},
    {What::Signals, &reports::phase, "X full", signalAxis, PHASES(reports::phase, "xFull")},
    {What::Signals, &reports::phase, "Y Rs", signalAxis, PHASES(reports::phase, "yRs")},
    {What::Signals, &reports::phase, "Y full", signalAxis, PHASES(reports::phase, "yFull")},
    {What::Signals, &reports::phase, "DC offsets", signalAxis, PHASES(reports::phase, "dcOffset")},
    {What::Quality,
     &reports::signal3,
     "Quality",
     qualityAxis,
     {{"average", &reports::signal3["averageQuality"]},
      {"minimum", &reports::signal3["minimumQuality"]},
      {"maximum", &reports::signal3["maximumQuality"]}}},
    {What::Quality,
     &reports::signal6,
     "Quality",
     qualityAxis,
     {{"X", &reports::signal6["qualityX"]},
      {"Y", &reports::signal6["qualityY"]},
      {"average", &reports::signal6["qualityAverage"]},
      {"minimum", &reports::signal6["qualityMinimum"]},
      {"maximum", &reports::signal6["qualityMaximum"]}}},
    {What::Quality,
     &reports::phase,
     "Quality",
     qualityAxis,
     {{"X", &reports::phase["xQuality"]}, {"Y", &reports::phase["yQuality"]}}},
    {What::Quality,
     &reports::penIdentity,
     "Quality",
     qualityAxis,
     {{"quality", &reports::penIdentity["quality"]}}},
    {What::Quality, &reports::position, "Quality", qualityAxis, {{"quality", &reports::position["quality"]}}},
    {What::Voltage, &reports::adc, "Voltage", "Voltage (V)", {{"voltage", &reports::adc["volts"]}}},
};

#undef PHASES

inline constexpr PathFields paths[] = {
    {"pen", &reports::position, &reports::position["x"], &reports::position["y"]},
    {"first of two pens", &reports::dualPen, &reports::dualPen["pen1X"], &reports::dualPen["pen1Y"]},
    {"second of two pens", &reports::dualPen, &reports::dualPen["pen2X"], &reports::dualPen["pen2Y"]},
};

} // namespace plots
