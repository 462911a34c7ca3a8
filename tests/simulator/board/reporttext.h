#pragma once

#include <string>

#include "script.h"

/// What a report carries behind its length and its type.
inline std::string textOf(const Report &report)
{
    return {report.begin() + 2, report.end()};
}
