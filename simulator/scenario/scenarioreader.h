#pragma once

#include "scenario.h"

#include <optional>
#include <string>

/// Reads a scenario file, all of it or nothing; scenarios/schema.json tells what may stand in one. Throws
/// nothing but std::bad_alloc.
/// \param error on failure one line without a line feed: file, place, what is wrong and what is allowed
std::optional<Scenario> readScenario(const std::string &path, std::string &error);
