#pragma once

#include <string_view>

#include "layouts.h"

/// What is blanked in a capture so that nobody can tell where a pen was.
namespace redacting {

/// What becomes of the fields of a layout, by their names. Bytes that no field has are blanked; the length,
/// the type and the sub-type are kept.
struct Decision
{
    const reports::Layout *layout;
    std::string_view kept;    ///< names with a blank between them
    std::string_view blanked; ///< whatever a position follows from, and what nobody knows
};

inline constexpr Decision decisions[] = {
    {&reports::signal1, "frequencyRaw",
     "reportWord8 reportWord10 xFine0 xFine60 xFine120 yFine0 yFine60 yFine120 "
     "xCoarse0 xCoarse60 xCoarse120 yCoarse0 yCoarse60 yCoarse120"},
    {&reports::signal2, "integrations", "raw0 raw60 raw120 norm0 norm60 norm120"},
    {&reports::signal3, "qualityFlag qualityPass averageQuality minimumQuality maximumQuality", ""},
    {&reports::signal4, "integrations", "integrator0 integrator60 integrator120"},
    {&reports::signal5, "integrations", "integrator0 integrator60 integrator120 norm0 norm60 norm120"},
    {&reports::signal6,
     "qualityX qualityY qualityAverage qualityMinimum qualityMaximum riseX fullX riseY fullY", ""},
    {&reports::phase, "xRsCount yRsCount xFnCount yFnCount xQuality yQuality",
     "xRs0 xRs60 xRs120 xFull0 xFull60 xFull120 yRs0 yRs60 yRs120 yFull0 yFull60 yFull120 "
     "dcOffset0 dcOffset60 dcOffset120"},
    {&reports::penIdentity, "penKind quality buttons", ""},
    {&reports::dualPen, "penNumber pen1Flags pen2Flags", "pen1X pen1Y pen2X pen2Y"},
    {&reports::position, "quality proximity",
     "x y fineX fineY xPitchNumber yPitchNumber driveX polarityX driveY polarityY"},
    {&reports::adc, "adcRaw volts", ""},
};

/// Takes the next name off a list.
constexpr std::string_view nextName(std::string_view &names)
{
    const std::string_view name = names.substr(0, names.find(' '));
    names.remove_prefix(name.size() < names.size() ? name.size() + 1 : name.size());
    return name;
}

/// How often a name is in a list.
constexpr std::size_t countOf(std::string_view name, std::string_view names)
{
    std::size_t count = 0;
    while (!names.empty())
        count += nextName(names) == name ? 1 : 0;
    return count;
}

/// Whether each layout has its decision, and each of its fields is named in it once.
constexpr bool allIsDecided()
{
    std::size_t index = 0;
    for (const Decision &decision : decisions) {
        if (decision.layout != reports::layouts[index++])
            return false;
        for (std::size_t i = 0; i < decision.layout->fieldCount; ++i) {
            const char *name = decision.layout->fields[i].name;
            if (countOf(name, decision.kept) + countOf(name, decision.blanked) != 1)
                return false;
        }
    }
    return index == sizeof(reports::layouts) / sizeof(reports::layouts[0]);
}
static_assert(allIsDecided(),
              "a field of a report of which nobody has said whether a position follows from it");

} // namespace redacting
