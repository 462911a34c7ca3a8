#include "mainwindow/qorvexgraph.h"

#include <memory>

#include <QMutexLocker>
#include <QScopedValueRollback>
#include <QTabWidget>

#include "mainwindow/datapacket.h"
#include "mainwindow/livewindows.h"
#include "mainwindow/qorvexwidget.h"
#include "monitor/reportformats.h"

namespace {

// `paused`, `displayThreshold` and `lastKeptTime` are read by the callbacks without a lock, on purpose:
// a stale value keeps or drops one report more. Each is read through an accessor of its own that is
// never inlined, so that a thread sanitizer can be told of these three and of nothing else.

QTime lastKeptTime; ///< when a report last restarted the rate limit; shared by all windows

[[gnu::noinline]] QTime lastKept()
{
    return lastKeptTime;
}

[[gnu::noinline]] void setLastKept(QTime time)
{
    lastKeptTime = time;
}

void restartRateLimit(QTime keptTime)
{
    setLastKept(keptTime);
    const QTime now = QTime::currentTime();
    // The clock went back, as it does at midnight.
    if (keptTime.msecsTo(now) < 0)
        setLastKept(now);
}

bool isRateLimited(unsigned char reportType)
{
    switch (reportType) {
    case reports::SignalReport:
    case reports::PhaseReport:
    case reports::PenIdentityReport:
    case reports::DualPenReport:
    case reports::PositionReport:
        return true;
    default:
        return false;
    }
}

// A command that the library answers on the caller's own thread leads from one view's Display() into the
// next. At the max depth the rest waits until all of them have returned.
constexpr int maxDispatchDepth = 4;

QByteArray copyOf(const unsigned char *data, unsigned int length)
{
    constexpr auto longest = 1U << 27; // its row of hexadecimal fits a QString
    if (!data)
        return {};
    return {reinterpret_cast<const char *>(data), static_cast<int>(qMin(length, longest))};
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

[[gnu::noinline]] bool qorvexgraph::isPaused() const
{
    return paused;
}

[[gnu::noinline]] int qorvexgraph::rateLimitMs() const
{
    return displayThreshold;
}

bool qorvexgraph::isDroppedByRateLimit() const
{
    // A null time is 0 ms from any other, so nothing limited is kept before the first text report.
    return lastKept().msecsTo(QTime::currentTime()) <= rateLimitMs();
}

void qorvexgraph::DataCallback(int device, const unsigned char *data, unsigned int length, void *context)
{
    const livewindows::Guard guard(context);
    qorvexgraph *window = guard.window();
    if (!window || window->isPaused())
        return;
    const auto type = static_cast<unsigned char>(read(reports::reportType, {data, data ? length : 0}));
    const bool limited = isRateLimited(type);
    if (limited && window->isDroppedByRateLimit())
        return;
    _DataPacket *packet = newPacket(device, data, length);
    // Once queued the packet belongs to the GUI thread and may be gone.
    const QTime arrival = packet->time;
    window->enqueue(packet);
    if (limited || type == reports::TextReport)
        restartRateLimit(arrival);
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
