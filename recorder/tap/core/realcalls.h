#pragma once

#include "entrypoints.h"

/// The entry points of the real driver library; null where it lacks one. Filled in when the tap is loaded, as
/// a host's first call follows that.
struct RealCalls
{
#define MEMBER(name, returns, fallback, parameters, arguments) returns(*name) parameters = nullptr;
#define NOTHING(name, returns, fallback, parameters, arguments)
    ORVEX_POINTERS(MEMBER, NOTHING)
#undef NOTHING
#undef MEMBER
};

/// What the object of the exports takes from the one that stays in memory.
namespace tap {

extern __attribute__((visibility("default"))) RealCalls real;

/// Those that record a call and its return, and forward it. To be called only where the real one is there.
extern __attribute__((visibility("default"))) const RealCalls forwarders;

} // namespace tap
