#include "boundary.h"
#include "textlines.h"

#include <chrono>
#include <thread>

// The entry points that move reports and commands, and those that concern no single board.

using namespace boundary;

namespace {

/// What the caller must have put into a record before it is filled.

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

/// What a library does that calls back before a call of its own has returned.
void deliverWithin(Board &board)
{
    const Report report = textReport(reports::TextReport, plainLine("within the command"));
    board.deliver(report.data(), static_cast<unsigned int>(report.size()));
}

} // namespace

int orvexAttach()
{
    called(__func__);
    return guarded(0, [] { return Library::instance().attach(); });
}

void orvexDetach()
{
    called(__func__);
    guarded([] { Library::instance().detach(); });
}

int orvexInterface()
{
    called(__func__);
    return usbInterface;
}

void orvexSetCallback(int device, OrvexDataCallback callback, void *context)
{
    called(__func__, device, callback, context);
    forBoards(device, [&](Board &board) { board.addListener(asFunction(callback), context); });
}

// The library has no remover of plug-and-play callbacks: this one takes out both sorts.
void orvexClearCallback(int device, OrvexDataCallback callback, void *context)
{
    called(__func__, device, callback, context);
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
    called(__func__, callback, context);
    guarded([&] {
        if (const auto notices = Library::instance().notices())
            notices->addListener(asFunction(callback), context);
    });
}

int orvexSendCommand(int device, const char *command)
{
    called(__func__, device, command);
    if (!command)
        return -1;
    const auto wrong =
        guarded(Library::CommandFaults{}, [] { return Library::instance().takeCommandFaults(); });
    if (wrong.delayMs > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(wrong.delayMs));
    return guarded(-1, [&] {
        int result = -1;
        for (const auto &board : Library::instance().boards()) {
            const bool addressed = board->id() == device;
            if (addressed && wrong.callback)
                deliverWithin(*board);
            board->command(addressed ? command : "");
            result = addressed ? 0 : result;
        }
        return result;
    });
}

int orvexWritePacket(int device, const void *data, int length)
{
    called(__func__, device, Hex{data, length});
    return loopBack(device, data, length);
}

void orvexEcho(int device, std::uint8_t length, const unsigned char *data)
{
    called(__func__, device, Hex{data, length});
    loopBack(device, data, length);
}

void orvexInject(int device, std::uint8_t length, const unsigned char *data)
{
    called(__func__, device, Hex{data, length});
    loopBack(device, data, length);
}

void orvexSendTouchPacketToSystem(int device, std::uint8_t length, const unsigned char *data)
{
    called(__func__, device, Hex{data, length});
    loopBack(device, data, length);
}

int orvexGetDeviceCount()
{
    called(__func__);
    return guarded(0, [] { return Library::instance().reportedCount(); });
}

std::uint8_t orvexEnumDeviceInfo(int index, _ORVEX_DEVICE_INFO *info)
{
    called(__func__, index, info);
    return guarded(std::uint8_t{0}, [&]() -> std::uint8_t {
        const auto id = Library::instance().reportedId(index);
        if (!id || !info || info->recordKind != deviceInfoKind)
            return 0;
        info->deviceId = *id;
        return 1;
    });
}

void orvexLibraryVersionNumber(unsigned char *major, unsigned char *minor, unsigned int *release,
                               unsigned int *build)
{
    called(__func__, major, minor, release, build);
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
    called(__func__);
    guarded([] { Library::instance().callerLock.take(); });
}

void orvexUnlock()
{
    called(__func__);
    guarded([] { Library::instance().callerLock.release(); });
}

int orvexSerialConnect(int port)
{
    called(__func__, port);
    return guarded(0, [&] { return Library::instance().connectSerial(port) ? 1 : 0; });
}

int orvexSerialDisconnect()
{
    called(__func__);
    return guarded(0, [] { return Library::instance().disconnectSerial() ? 1 : 0; });
}

int orvexSerialGetConnected(int *port)
{
    called(__func__, port);
    const int connected = guarded(-1, [] { return Library::instance().connectedSerial(); });
    if (connected < 0)
        return 0;
    if (port)
        *port = connected;
    return 1;
}

void orvexSerialSetStartupMode(int mode)
{
    called(__func__, mode);
    Library::instance().serialStartupMode = mode;
}

int orvexSerialGetStartupMode()
{
    called(__func__);
    return Library::instance().serialStartupMode;
}
