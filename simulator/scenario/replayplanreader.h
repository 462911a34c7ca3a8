#pragma once

#include <memory>
#include <string>

#include "replay.h"
#include "strictjson.h"

/// What a scenario's `replay` says, with its capture read; throws an Invalid.
/// \param folder the scenario's, to which the capture's path is relative
std::shared_ptr<const Replay> replayOf(const Json &node, const std::string &folder);
