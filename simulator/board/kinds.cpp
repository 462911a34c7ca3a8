#include "kinds.h"

#include <algorithm>
#include <iterator>

std::optional<Kind> kindNamed(std::string_view name)
{
    const auto match = std::find(std::begin(kindNames), std::end(kindNames), name);
    if (match == std::end(kindNames))
        return std::nullopt;
    return static_cast<Kind>(match - std::begin(kindNames));
}
