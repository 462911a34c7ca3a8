#pragma once

#include "scenario.h"
#include "strictjson.h"

/// One of the boards of a scenario, without its seed and its events.
Scenario::Place readBoard(const Json &node);
