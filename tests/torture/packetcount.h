#pragma once

class qorvexgraph;

/// Counts the packets that the tool makes and frees, by replacing the global operators new and delete.
///
/// The one place that makes packets and the one that frees them are learnt from a packet that is sent
/// through.
namespace packetcount {

/// Not under the thread sanitizer, which must see what Qt allocates as Qt's.
bool isCounting();
/// Sends a packet through an attached window, whose queue is empty. GUI thread, once, before anything else.
void learn(qorvexgraph *window);

/// Since learn(). Any thread.
long created();
long freed();

} // namespace packetcount
