#pragma once

#include <cstdint>

#include "entrypoints.h"

/// The callbacks of the host, each behind a trampoline of ours. Any thread; no lock.
namespace tap {

/// The trampoline that stands for a function: the same for the same function. Null stays null. The function
/// itself when the pool is used up.
OrvexDataCallback trampolineFor(OrvexDataCallback function);
OrvexPnpCallback trampolineFor(OrvexPnpCallback function);

/// The trampoline that stands for a function already; otherwise the function itself.
OrvexDataCallback knownTrampoline(OrvexDataCallback function);
OrvexPnpCallback knownTrampoline(OrvexPnpCallback function);

/// Number of a listener, which is a function with its context: from 1, in the order in which they were added.
/// 0 for one that is not known, or beyond 256.
std::uint32_t listenerNumber(const void *function, const void *context);
std::uint32_t addListener(const void *function, const void *context);

} // namespace tap
