#pragma once

#include "simulator/scenario.h"
#include "simulator/strictjson.h"

/// One of the boards of a scenario, without its seed and its events.
Scenario::Place readBoard(const JsonNode &node);
