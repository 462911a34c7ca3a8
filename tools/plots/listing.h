#pragma once

#include <cstddef>

/// How much of what a capture may have without end is kept and shown. What is left out is counted.
namespace plots {

inline constexpr std::size_t maxListed = 1000;  ///< calls of a sort, and marks
inline constexpr std::size_t maxSessions = 100; ///< on a page
inline constexpr std::size_t maxBoards = 32;    ///< that are drawn, of all sessions together

} // namespace plots
