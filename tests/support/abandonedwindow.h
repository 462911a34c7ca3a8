#pragma once

#include "datapacket.h"
#include "livewindows.h"
#include "orvexwrapper.h"
#include "qorvexgraph.h"

/// Destroys a window, and frees what it leaves behind by design: the packets still queued, and the binding if
/// it is attached.
/// \return number of packets left
inline std::size_t destroyAbandoned(qorvexgraph *window)
{
    // From here on no thread of the library can queue one more.
    livewindows::remove(window);
    const std::size_t left = window->packetQueue.size();
    for (_DataPacket *packet : window->packetQueue)
        delete packet;
    window->packetQueue.clear();
    const OrvexWrapper *binding = window->hardware;
    delete window;
    delete binding;
    return left;
}
