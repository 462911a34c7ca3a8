#pragma once

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

} // namespace tap
