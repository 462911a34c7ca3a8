#include "simulator/boundary.h"

#include <string_view>

// The entry points that move reports and commands, and those that concern no single board.

using namespace boundary;

namespace {

/// What the caller must have put into a record before it is filled.
constexpr std::uint32_t knownRecordKind = 6;

constexpr int usbInterface = 1;

int loopBack(int device, const void *data, int length)
{
    if (length < 0 || (!data && length > 0))
        return -1;
    const auto *bytes = static_cast<const unsigned char *>(data);
    const auto count = static_cast<std::size_t>(length);
    const int told = tellBoards(device, [&](Board &board) { board.loopBack(bytes, count); });
    return told < 0 ? told : length;
}

} // namespace

int orvexAttach()
{
    return guarded(0, [] { return Library::instance().attach(); });
}

void orvexDetach()
{
    guarded([] { Library::instance().detach(); });
}

int orvexInterface()
{
    return usbInterface;
}

void orvexSetCallback(int device, OrvexDataCallback callback, void *context)
{
    forBoards(device, [&](Board &board) { board.addListener(asFunction(callback), context); });
}

// The library has no remover of plug-and-play callbacks: this one takes out both sorts.
void orvexClearCallback(int device, OrvexDataCallback callback, void *context)
{
    forBoards(device, [&](Board &board) { board.removeListener(asFunction(callback), context); });
    if (device != 0)
        return;
    guarded([&] {
        if (const auto notices = Library::instance().notices())
            notices->removeListener(asFunction(callback), context);
    });
}

void orvexSetPnpCallback(OrvexPnpCallback callback, void *context)
{
    guarded([&] {
        if (const auto notices = Library::instance().notices())
            notices->addListener(asFunction(callback), context);
    });
}

int orvexSendCommand(int device, const char *command)
{
    if (!command)
        return -1;
    return tellBoards(device, [&](Board &board) { board.command(command); });
}

int orvexWritePacket(int device, const void *data, int length)
{
    return loopBack(device, data, length);
}

void orvexEcho(int device, std::uint8_t length, const unsigned char *data)
{
    loopBack(device, data, length);
}

void orvexInject(int device, std::uint8_t length, const unsigned char *data)
{
    loopBack(device, data, length);
}

void orvexSendTouchPacketToSystem(int device, std::uint8_t length, const unsigned char *data)
{
    loopBack(device, data, length);
}

int orvexGetDeviceCount()
{
    return guarded(0, [] { return static_cast<int>(Library::instance().boards().size()); });
}

std::uint8_t orvexEnumDeviceInfo(int index, _ORVEX_DEVICE_INFO *info)
{
    return guarded(std::uint8_t{0}, [&]() -> std::uint8_t {
        const auto boards = Library::instance().boards();
        const bool known = index >= 0 && static_cast<std::size_t>(index) < boards.size();
        if (!known || !info || info->recordKind != knownRecordKind)
            return 0;
        info->deviceId = boards[static_cast<std::size_t>(index)]->id();
        return 1;
    });
}

void orvexLibraryVersionNumber(unsigned char *major, unsigned char *minor, unsigned int *release,
                               unsigned int *build)
{
    if (major)
        *major = 1;
    if (minor)
        *minor = 0;
    if (release)
        *release = 0;
    if (build)
        *build = 0;
}

void orvexLock()
{
    guarded([] { Library::instance().callerLock.take(); });
}

void orvexUnlock()
{
    guarded([] { Library::instance().callerLock.release(); });
}

int orvexSerialConnect(int port)
{
    if (port < 0)
        return 0;
    Library::instance().serialPort = port;
    return 1;
}

int orvexSerialDisconnect()
{
    return Library::instance().serialPort.exchange(-1) < 0 ? 0 : 1;
}

int orvexSerialGetConnected(int *port)
{
    const int connected = Library::instance().serialPort;
    if (connected < 0)
        return 0;
    if (port)
        *port = connected;
    return 1;
}

void orvexSerialSetStartupMode(int mode)
{
    Library::instance().serialStartupMode = mode;
}

int orvexSerialGetStartupMode()
{
    return Library::instance().serialStartupMode;
}
