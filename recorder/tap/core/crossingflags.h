#pragma once

#include <atomic>
#include <cstdint>

namespace tap {

/// The simulator's orvexsim_replay_is_on(); null where the library has none. Set while the tap is loaded.
extern __attribute__((visibility("default"))) std::atomic<int (*)()> replayIsOn;

/// The flags that each crossing has, whatever its kind: "within a call of the same thread", "from a replay".
/// To be asked within a callback or a call of the library, which then is loaded. Any thread; no lock.
std::uint8_t flagsOfCrossing();

} // namespace tap
