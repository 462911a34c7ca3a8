#include <cstdio>
#include <dlfcn.h>

#include "crossingflags.h"
#include "realcalls.h"
#include "session.h"
#include "simulatornames.h"

// The driver library's entry points. Each is resolved at each dlsym(): to the forwarder where the real
// library has it, and to nothing where it lacks it, so that callers fall back as they would without us. A
// resolver only reads, as one that looks up a name itself would leave the caller's dlerror() pointing at
// freed memory.

namespace {

void *handle = nullptr;
bool wasOpen = false; ///< the host has a handle of its own on the library

#define MEMBER(name) void *name = nullptr;
struct
{
    ORVEXSIM_NAMES(MEMBER)
} simulator;
#undef MEMBER

template <typename Function>
void lookUp(Function &function, const char *name)
{
    function = reinterpret_cast<Function>(dlsym(handle, name));
}

void lookUpAll()
{
#define LOOK_UP(name) lookUp(tap::real.name, #name);
    ORVEX_LOOKUPS(LOOK_UP)
#undef LOOK_UP
#define LOOK_UP(name) lookUp(simulator.name, #name);
    ORVEXSIM_NAMES(LOOK_UP)
#undef LOOK_UP
    tap::replayIsOn = reinterpret_cast<int (*)()>(simulator.orvexsim_replay_is_on);
    dlerror();
}

/// What the user has chosen, else what the host hands over, or what the loader finds.
const char *realPath()
{
    const char *chosen = tap::environmentOf("PADSCOPE_DRIVER_OPTION");
    return chosen ? chosen : tap::environmentOf("PADSCOPE_DRIVER");
}

/// The loader tells files apart by device and inode.
bool isThisLibrary(void *library)
{
    Dl_info info{};
    void *map = nullptr;
    return dladdr1(reinterpret_cast<void *>(&isThisLibrary), &info, &map, RTLD_DL_LINKMAP) != 0 &&
           map == library;
}

__attribute__((constructor)) void openReal()
{
    tap::real = {}; // as it was left by the last one
    const char *path = realPath();
    if (!path) {
        tap::say("the environment names no driver library");
        tap::noteFailedOpening();
        return;
    }
    handle = dlopen(path, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    wasOpen = handle != nullptr;
    if (!handle)
        handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        std::fprintf(stderr, "%s\n", dlerror());
        tap::noteFailedOpening();
        return;
    }
    if (isThisLibrary(handle)) {
        tap::say("this is the tap, no driver library: ", path);
        tap::noteFailedOpening();
        dlclose(handle);
        handle = nullptr;
        return;
    }
    lookUpAll();
    tap::openRing();
}

__attribute__((destructor)) void closeReal()
{
    if (!handle)
        return;
    if (wasOpen)
        tap::noteLibraryStays();
    dlclose(handle);
    // Not before: what its threads still delivered was told whether it is a replay's.
    if (!wasOpen)
        tap::replayIsOn = nullptr;
}

} // namespace

extern "C" {

#define NOTHING(name, returns, fallback, parameters, arguments)
#define EXPORT(name, returns, fallback, parameters, arguments)                                               \
    __attribute__((no_sanitize("all"))) static returns(*resolve_##name()) parameters                         \
    {                                                                                                        \
        return tap::real.name ? tap::forwarders.name : nullptr;                                              \
    }                                                                                                        \
    __attribute__((visibility("default"), ifunc("resolve_" #name))) returns name parameters;
ORVEX_POINTERS(EXPORT, NOTHING)
#undef EXPORT
#undef NOTHING

#define EXPORT(name)                                                                                         \
    __attribute__((no_sanitize("all"))) static void (*resolve_##name())()                                    \
    {                                                                                                        \
        return reinterpret_cast<void (*)()>(simulator.name);                                                 \
    }                                                                                                        \
    __attribute__((visibility("default"), ifunc("resolve_" #name))) void name();
ORVEXSIM_NAMES(EXPORT)
#undef EXPORT
}
