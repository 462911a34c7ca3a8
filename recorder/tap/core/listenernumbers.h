#pragma once

#include <cstdint>

/// Numbers of the listeners, which are functions with their contexts: from 1, in the order in which they were
/// registered. One that has ended, and is registered again, has a new number. Any thread; no lock.
namespace tap {

/// Of a listener that was never registered, has ended long ago, or was one more than 256 at once.
inline constexpr std::uint32_t unknownListener = 0xFFFFFFFF;

/// Number of a listener that is registered, or has ended not long ago. 0 for null.
std::uint32_t listenerNumber(const void *function, const void *context);
/// The same for one that is being registered.
std::uint32_t addListener(const void *function, const void *context);

/// Callbacks that are under way still find its number.
void endListener(const void *function, const void *context);
void endListeners();

} // namespace tap
