#include "dissector.h"

namespace {

constexpr std::string_view text =
#include "dissectorliteral.h"
    ;

} // namespace

std::string_view dissectorText()
{
    return text;
}
