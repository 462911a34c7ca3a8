#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace padscope {

/// "5f0c93a1"
std::string sessionText(std::uint32_t session);

/// Whether a file is a capture of which one session can be played: reads it to its end, and prints a line
/// when it is not.
/// \param session the one that is asked for; nothing for the only one
bool isPlayable(const std::string &path, const std::optional<std::uint32_t> &session);

} // namespace padscope
