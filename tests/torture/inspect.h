#pragma once

#include <QMutexLocker>
#include <utility>

#include "datapacket.h"
#include "livewindows.h"
#include "monitor.h"
#include "orvexwrapper.h"
#include "qorvexgraph.h"

/// What the torture reaches of the tool's private members.
struct Inspect
{
    static long queued(qorvexgraph &window)
    {
        const QMutexLocker lock(&window.queueMutex);
        return static_cast<long>(window.packetQueue.size());
    }
    static _DataPacket *lastQueued(const qorvexgraph &window) { return window.packetQueue.back(); }
    static void detach(qorvexgraph &window) { window.detachFromHardware(); }

    /// Destroys a window, and frees what it leaves behind by design: the packets still queued, the monitor's
    /// previous one, and the binding if it is attached.
    /// \return number of packets that were left in the queue
    static long destroyAbandoned(qorvexgraph *window)
    {
        // From here on no thread of the library can queue one more.
        livewindows::remove(window);
        const long left = queued(*window);
        qDeleteAll(window->packetQueue);
        window->packetQueue.clear();
        delete std::exchange(window->monitorView->previousPacket, nullptr);
        const OrvexWrapper *binding = window->hardware;
        delete window;
        delete binding;
        return left;
    }
};
