#pragma once

#include <string>

#include "packet.h"

namespace comparing {

/// Whether two packets of one kind are equal under the rules.
bool areEqual(const Packet &a, const Packet &b, const FieldRules &rules);

/// What differs, field by field, then byte by byte where no field is. Empty for packets that are equal.
/// \code
/// yFine60 118 -> 121, byte 5 00 -> ff
/// length 6 -> 7, characters "a" -> "ab"
/// command "?" -> none
/// \endcode
std::string differencesOf(const Packet &a, const Packet &b, const FieldRules &rules);

} // namespace comparing
