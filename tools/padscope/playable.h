#pragma once

#include <string>

#include "replayscenario.h"

namespace padscope {

/// Whether a capture can be played as it is asked for: reads it as the simulator will, and prints a line when
/// it cannot. \param path as it is to be printed
bool isPlayable(const std::string &path, const Replay &replay);

} // namespace padscope
