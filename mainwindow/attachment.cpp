#include <memory>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScopeGuard>

#include "livewindows.h"
#include "orvexwrapper.h"
#include "qorvexgraph.h"

namespace {

constexpr unsigned char allTransfers = 255;
constexpr unsigned char closingDebugMode = 1;

} // namespace

// Reentrancy: the library may run the event loop in any call, and the window may be closed there. So after
// each call of an attach the binding may be gone. An attach requested inside an attach is deferred until that
// has ended; inside a detach it is dropped, since the window ends detached.

void qorvexgraph::AttachHardware()
{
    const bool isNotification =
        sender() == this && senderSignalIndex() == metaObject()->indexOfSignal("PnpHappened()");
    if (!ignoresNotifications || !isNotification)
        attach();
}

void qorvexgraph::attach()
{
    if (isDetaching)
        return;
    if (isAttaching) {
        attachLater();
        return;
    }
    const QScopedValueRollback<bool> mark(isAttaching, true);
    // At every attach, on purpose. Connections accumulate; the extra calls find an empty queue.
    connect(this, SIGNAL(DataReceived()), this, SLOT(OnDataReceived()));
    if (hardware)
        hardware->Attach();
    else
        openLibrary();
    if (hardware)
        enumerateDevices();
    ShowDevices();
}

void qorvexgraph::attachLater()
{
    // Deferred by a timer: a library that notifies of every attach must not starve the event loop.
    attachTimer.start(1, this);
}

void qorvexgraph::attachAgain()
{
    if (isAttaching)
        return;
    attachTimer.stop();
    // An exception thrown by the host may end this function while commands wait.
    const auto rest = qScopeGuard([this] {
        if (!waitingCommands.isEmpty())
            attachLater();
    });
    if (waitingCommands.isEmpty())
        attach();
    else
        attachForCommand();
    // Commands typed inside these calls are queued behind them.
    while (hardware && !waitingCommands.isEmpty())
        sendTypedCommand(waitingCommands.takeFirst());
}

void qorvexgraph::openLibrary()
{
    ignoresNotifications = false;
    paused = false;
    // Kept even if the library can't be loaded: each operation then returns its fallback.
    auto wrapper = std::make_unique<OrvexWrapper>();
    wrapper->Attach();
    if (paused) // detached from within
        return;
    hardware = wrapper.release();
    hardware->SetPnpCallback(pnp, this);
}

void qorvexgraph::enumerateDevices()
{
    _ORVEX_DEVICE_INFO info{};
    info.recordKind = deviceInfoKind;
    const int count = hardware->GetDeviceCount();
    if (!hardware)
        return;
    deviceIds.clear();
    for (int index = 0; index < count && hardware; ++index) {
        if (!hardware->EnumDeviceInfo(index, &info))
            continue;
        if (!hardware)
            return;
        deviceIds.append(info.deviceId);
        hardware->SetXferMask(info.deviceId, allTransfers);
        if (hardware)
            hardware->SetCallback(info.deviceId, DataCallback, this);
    }
}

void qorvexgraph::pnp(void *context)
{
    livewindows::Guard guard(context);
    if (!guard.window())
        return;
    guard.beforeSignal();
    emit guard.window()->PnpHappened();
}

void qorvexgraph::detachFromHardware()
{
    attachTimer.stop();
    waitingCommands.clear();
    if (isDetaching)
        return;
    if (hardware || isAttaching)
        ignoresNotifications = true;
    if (hardware) {
        const QScopedValueRollback<bool> mark(isDetaching, true);
        sendClosingCommands();
        hardware->Detach();
        delete hardware;
        hardware = nullptr;
    }
    paused = true;
    ShowDevices();
}

void qorvexgraph::sendClosingCommands()
{
    const QList<int> ids = deviceIds;
    for (int id : ids) {
        hardware->SetDriverDebugMode(id, closingDebugMode, everyDebugBit);
        hardware->SendCommand(id, ":MDU0\r");
        hardware->SendCommand(id, ":MDP0\r");
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
