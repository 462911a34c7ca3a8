#include <dlfcn.h>

namespace {

const auto simulators =
    reinterpret_cast<int (*)()>(dlsym(dlopen(SIMULATOR_FILE, RTLD_NOW), "orvexsim_replay_is_on"));

} // namespace

/// What the tap asks at each report when the driver library is the simulator.
extern "C" __attribute__((visibility("default"))) int orvexsim_replay_is_on()
{
    return simulators();
}
