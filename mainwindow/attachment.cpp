#include "mainwindow/qorvexgraph.h"

#include <QCoreApplication>
#include <QLabel>

#include "driver/orvexwrapper.h"
#include "mainwindow/livewindows.h"

namespace {

constexpr std::uint32_t deviceInfoKind = 6;
constexpr unsigned char everyTransfer = 255;
constexpr unsigned char quietDebugMode = 1;
constexpr unsigned int everyDebugBit = 0xFFFFFFFF;

} // namespace

void qorvexgraph::AttachHardware()
{
    // On purpose at every attach, so connections accumulate: the extra deliveries find an empty queue.
    connect(this, SIGNAL(DataReceived()), this, SLOT(OnDataReceived()));
    if (hardware) {
        hardware->Attach();
    } else {
        paused = false;
        // Kept when the library can't be loaded, too: every operation then falls back.
        auto *wrapper = new OrvexWrapper;
        wrapper->Attach();
        hardware = wrapper;
        hardware->SetPnpCallback(pnp, this);
    }
    enumerateDevices();
    ShowDevices();
}

void qorvexgraph::enumerateDevices()
{
    _ORVEX_DEVICE_INFO info{};
    info.recordKind = deviceInfoKind;
    const int count = hardware->GetDeviceCount();
    deviceIds.clear();
    for (int index = 0; index < count; ++index) {
        if (!hardware->EnumDeviceInfo(index, &info))
            continue;
        deviceIds.append(info.deviceId);
        hardware->SetXferMask(info.deviceId, everyTransfer);
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
        const QList<int> ids = deviceIds;
        for (int id : ids) {
            hardware->SetDriverDebugMode(id, quietDebugMode, everyDebugBit);
            hardware->SendCommand(id, ":MDU0\r");
            hardware->SendCommand(id, ":MDP0\r");
        }
        hardware->Detach();
        delete hardware;
        hardware = nullptr;
        // A plug-and-play notice that is still queued must not attach the window again.
        QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    }
    paused = true;
    ShowDevices();
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
