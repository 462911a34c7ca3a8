#include "mainwindow/qorvexgraph.h"

#include <utility>

#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>

#include "driver/orvexwrapper.h"
#include "mainwindow/livewindows.h"

namespace {

constexpr std::uint32_t deviceInfoKind = 6;
constexpr unsigned char everyTransfer = 255;
constexpr unsigned char quietDebugMode = 1;

} // namespace

// The library may run the event loop in any call, and so have the window closed there: after each call the
// binding may be gone. A notice that comes from within an attach waits for its end.

void qorvexgraph::AttachHardware()
{
    if (isStaleNotice())
        return;
    if (isAttaching) {
        attachAgain = true;
        return;
    }
    const QScopedValueRollback<bool> mark(isAttaching, true);
    // On purpose at every attach, so connections accumulate: the extra deliveries find an empty queue.
    connect(this, SIGNAL(DataReceived()), this, SLOT(OnDataReceived()));
    if (hardware)
        hardware->Attach();
    else
        openLibrary();
    if (hardware)
        enumerateDevices();
    ShowDevices();
    attachAgain = attachAgain && hardware;
    // Not at once: a library that gives notice of every attach must leave time for everything else.
    if (attachAgain)
        QTimer::singleShot(1, this, [this] { attachOnceMore(); });
}

void qorvexgraph::attachOnceMore()
{
    if (std::exchange(attachAgain, false))
        AttachHardware();
}

bool qorvexgraph::event(QEvent *event)
{
    if (event->type() != QEvent::MetaCall)
        return QWidget::event(event);
    const QPointer<qorvexgraph> self(this);
    isQueuedCall = true;
    const bool known = QWidget::event(event);
    if (self)
        isQueuedCall = false;
    return known;
}

/// Whether this call is a notice that was queued before the last detach, and must not attach the window
/// again.
bool qorvexgraph::isStaleNotice()
{
    return std::exchange(isQueuedCall, false) && sender() == this && dropsNotices;
}

void qorvexgraph::dropQueuedNotices()
{
    dropsNotices = true;
    // Comes after all that is queued now, and before what will be.
    QMetaObject::invokeMethod(
        this,
        [this, number = ++detaches] {
            if (number == detaches)
                dropsNotices = false;
        },
        Qt::QueuedConnection);
}

void qorvexgraph::openLibrary()
{
    dropsNotices = false;
    paused = false;
    // Kept when the library can't be loaded, too: every operation then falls back.
    auto *wrapper = new OrvexWrapper;
    wrapper->Attach();
    if (paused) { // closed from within
        delete wrapper;
        return;
    }
    hardware = wrapper;
    hardware->SetPnpCallback(pnp, this);
}

void qorvexgraph::enumerateDevices()
{
    _ORVEX_DEVICE_INFO info{};
    info.recordKind = deviceInfoKind;
    const int count = hardware->GetDeviceCount();
    deviceIds.clear();
    for (int index = 0; index < count && hardware; ++index) {
        if (!hardware->EnumDeviceInfo(index, &info))
            continue;
        deviceIds.append(info.deviceId);
        if (hardware)
            hardware->SetXferMask(info.deviceId, everyTransfer);
        if (hardware)
            hardware->SetCallback(info.deviceId, DataCallback, this);
    }
}

void qorvexgraph::pnp(void *context)
{
    const livewindows::Guard guard(context);
    if (guard.window())
        emit guard.window()->PnpHappened();
}

void qorvexgraph::detachFromHardware()
{
    if (hardware) {
        quietBoards();
        if (hardware)
            hardware->Detach();
        dropQueuedNotices();
        // Taken first, so that a close from within the deletion finds it gone.
        delete std::exchange(hardware, nullptr);
    }
    // Unless the deletion led to the next attach.
    if (!hardware) {
        paused = true;
        attachAgain = false;
        dropQueuedNotices();
    }
    ShowDevices();
}

void qorvexgraph::quietBoards()
{
    const QList<int> ids = deviceIds;
    for (int id : ids) {
        if (hardware)
            hardware->SetDriverDebugMode(id, quietDebugMode, everyDebugBit);
        for (const char *command : {":MDU0\r", ":MDP0\r"}) {
            if (hardware)
                hardware->SendCommand(id, command);
        }
    }
}

void qorvexgraph::ShowDevices()
{
    QString text;
    switch (deviceIds.size()) {
    case 0:
        text = tr("<i>No device found.</i>");
        break;
    case 1:
        text = tr("<b>%1 device found.</b>").arg(1);
        break;
    default:
        text = tr("<b>%1 devices found.</b>").arg(deviceIds.size());
    }
    if (paused)
        text += tr(" <i>Paused</i>");
    statusLabel->setText(text);
}
