#pragma once

#include <atomic>

class qorvexgraph;

/// Counts the packets that the tool makes and frees, by replacing the global operators new and delete.
///
/// The one place that makes packets and the one that frees them are learnt from a packet.
namespace packetcount {

#ifdef __SANITIZE_THREAD__
/// It must see what Qt allocates as Qt's.
inline constexpr bool isCounting = false;
#else
inline constexpr bool isCounting = true;
#endif

/// Sends a packet through an attached window, whose queue is empty. GUI thread, once, before anything else.
void learn(qorvexgraph *window);

/// Since learn().
inline std::atomic<long> made{0};
inline std::atomic<long> freed{0};

} // namespace packetcount
