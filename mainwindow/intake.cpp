#include <memory>
#include <QMutexLocker>
#include <QScopedValueRollback>
#include <QTabWidget>

#include "datapacket.h"
#include "decoding.h"
#include "livewindows.h"
#include "qorvexgraph.h"
#include "qorvexwidget.h"
#include "ratelimiter.h"

namespace {

// Reentrancy: the library may answer a command on the caller's own thread, so that one dispatch runs inside
// another. At the max depth the remaining packets wait until all dispatches have returned.
constexpr int maxDispatchDepth = 4;

QByteArray copyOf(const unsigned char *data, unsigned int length)
{
    constexpr auto maxLength = 1U << 27; // its row of hexadecimal fits a QString
    if (!data)
        return {};
    return {reinterpret_cast<const char *>(data), static_cast<int>(qMin(length, maxLength))};
}

_DataPacket *newPacket(int device, const unsigned char *data, unsigned int length)
{
    auto *packet = new _DataPacket;
    packet->data = copyOf(data, length);
    packet->length = length;
    packet->device = device;
    packet->time = QTime::currentTime();
    packet->checksum = qChecksum(packet->data.constData(), static_cast<uint>(packet->data.size()));
    return packet;
}

} // namespace

// Read by the callbacks without a lock, on purpose: a stale value keeps or drops one report more. Never
// inlined, so that the thread sanitizer's suppressions name these two and nothing else.

[[gnu::noinline]] bool qorvexgraph::isPaused() const
{
    return paused;
}

[[gnu::noinline]] int qorvexgraph::rateLimitMs() const
{
    return displayThreshold;
}

void qorvexgraph::DataCallback(int device, const unsigned char *data, unsigned int length, void *context)
{
    livewindows::Guard guard(context);
    qorvexgraph *window = guard.window();
    if (!window || window->isPaused())
        return;
    const reports::RateLimit limit =
        reports::rateLimitOf(read(reports::reportType, {data, data ? length : 0}));
    if (limit == reports::RateLimit::Limited && ratelimiter::comesTooSoon(window->rateLimitMs()))
        return;
    _DataPacket *packet = newPacket(device, data, length);
    // Once queued, the packet is owned by the GUI thread and may be deleted.
    const QTime arrival = packet->time;
    window->enqueue(packet);
    if (limit != reports::RateLimit::None)
        ratelimiter::restart(arrival);
    guard.beforeSignal();
    emit window->DataReceived();
}

void qorvexgraph::enqueue(_DataPacket *packet)
{
    const QMutexLocker lock(&queueMutex);
    packetQueue.push_back(packet);
}

void qorvexgraph::OnDataReceived()
{
    queueMutex.lock();
    std::size_t count = packetQueue.size();
    queueMutex.unlock();
    if (count == 0 || !hardware)
        return;
    if (dispatchDepth == maxDispatchDepth)
        dispatchTimer.start(1, this);
    if (dispatchTimer.isActive())
        return;
    const QScopedValueRollback<int> depth(dispatchDepth, dispatchDepth + 1);
    // Packets that arrive meanwhile wait for the next signal.
    for (; count > 0; --count) {
        const std::unique_ptr<_DataPacket> packet(takeFirstPacket());
        if (packet)
            showPacket(packet.get());
    }
}

_DataPacket *qorvexgraph::takeFirstPacket()
{
    const QMutexLocker lock(&queueMutex);
    if (packetQueue.empty())
        return nullptr;
    _DataPacket *packet = packetQueue.front();
    packetQueue.pop_front();
    return packet;
}

void qorvexgraph::showPacket(_DataPacket *packet)
{
    if (auto *view = qobject_cast<qorvexwidget *>(tabs->currentWidget())) {
        view->Display(packet);
        displayThreshold = view->displayThresholdMs();
    }
}
