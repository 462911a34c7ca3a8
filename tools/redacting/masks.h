#pragma once

#include <string>

#include "recordreader.h"
#include "signatures.h"

namespace reports {
struct Layout;
}

namespace redacting {

/// The bits of a payload that are kept: those that are 1. Whatever lies behind the mask is blanked.
using Mask = std::string;

/// \return whether there is anything to blank, whatever stands there
bool applyMask(const Mask &mask, std::string &payload);

/// What holds for all reports of a layout.
struct LayoutRule
{
    Mask mask;
    std::string name;    ///< "signal1"
    std::string blanked; ///< names of fields: "x, y"
    std::string left;
};

const LayoutRule &ruleOf(const reports::Layout &layout);

/// Of a report without fields that is no text. A length and a type are kept if they are known to be that.
Mask maskOfUnknown(const capture::Record &report);

/// Of a call, or of its return. What the tool wrote and what it read has no known meaning; numbers, commands
/// and device records have.
Mask maskOf(const signatures::Signature &signature, bool isCall, capture::ByteView payload);

} // namespace redacting
