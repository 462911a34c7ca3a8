#pragma once

#include "scenario.h"
#include "strictjson.h"

/// Adds an entry of the timeline to the boards that it names, or to the library's events. The scenario's
/// boards must be known.
void readEvent(const Json &node, Scenario &scenario);

/// Does the same with an entry of the faults.
void readFault(const Json &node, Scenario &scenario);
