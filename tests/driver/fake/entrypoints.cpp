#include <cstdint>

#include "driver/fake/boards.h"
#include "driver/fake/journal.h"

// The 47 entry points. Each writes down how it was called, and answers what the test has set.

using boards::DataCallback;
using boards::PnpCallback;

namespace {

/// A function's address, as the journal writes pointers.
template <typename Function>
const void *address(Function function)
{
    return reinterpret_cast<const void *>(function);
}

std::uint8_t byteResult(const char *entryPoint)
{
    return static_cast<std::uint8_t>(boards::result(entryPoint));
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

int orvexAttach()
{
    journal::record("orvexAttach");
    return boards::result("orvexAttach");
}

void orvexDetach()
{
    journal::record("orvexDetach");
}

int orvexInterface()
{
    journal::record("orvexInterface");
    return boards::result("orvexInterface");
}

void orvexSetCallback(int device, DataCallback callback, void *context)
{
    journal::record("orvexSetCallback", device, address(callback), static_cast<const void *>(context));
    boards::addDataCallback(device, callback, context);
}

void orvexClearCallback(int device, DataCallback callback, void *context)
{
    journal::record("orvexClearCallback", device, address(callback), static_cast<const void *>(context));
}

int orvexSendCommand(int device, const char *command)
{
    journal::record("orvexSendCommand", device, command);
    return boards::result("orvexSendCommand");
}

int orvexWritePacket(int device, const void *data, int length)
{
    journal::record("orvexWritePacket", device, data, length);
    return boards::result("orvexWritePacket");
}

void orvexSetXferMask(int device, std::uint8_t mask)
{
    journal::record("orvexSetXferMask", device, mask);
}

int orvexGetDeviceCount()
{
    journal::record("orvexGetDeviceCount");
    return boards::result("orvexGetDeviceCount", boards::count());
}

std::uint8_t orvexEnumDeviceInfo(int index, unsigned char *record)
{
    journal::record("orvexEnumDeviceInfo", index, static_cast<const void *>(record));
    const bool found = boards::enumerate(index, record);
    return static_cast<std::uint8_t>(boards::result("orvexEnumDeviceInfo", found));
}

void orvexSetPnpCallback(PnpCallback callback, void *context)
{
    journal::record("orvexSetPnpCallback", address(callback), static_cast<const void *>(context));
    boards::addPnpCallback(callback, context);
}

void orvexSetPointingDeviceDestination(int device, std::uint8_t a, std::uint8_t b, std::uint8_t c)
{
    journal::record("orvexSetPointingDeviceDestination", device, a, b, c);
}

void orvexSetPointingDeviceDestinationEx(int device, std::uint8_t a, std::uint8_t b, std::uint8_t c,
                                         std::uint8_t d)
{
    journal::record("orvexSetPointingDeviceDestinationEx", device, a, b, c, d);
}

int orvexGetPointingDeviceDestination(int device, std::uint8_t a, std::uint8_t b)
{
    journal::record("orvexGetPointingDeviceDestination", device, a, b);
    return boards::result("orvexGetPointingDeviceDestination");
}

void orvexSetTouchDestination(int device, std::uint8_t a)
{
    journal::record("orvexSetTouchDestination", device, a);
}

void orvexSetTouchDestinationEx(int device, std::uint8_t a, std::uint8_t b)
{
    journal::record("orvexSetTouchDestinationEx", device, a, b);
}

int orvexGetTouchDestination(int device)
{
    journal::record("orvexGetTouchDestination", device);
    return boards::result("orvexGetTouchDestination");
}

void orvexSetTouchEnabled(int device, std::uint8_t a)
{
    journal::record("orvexSetTouchEnabled", device, a);
}

std::uint8_t orvexGetTouchEnabled(int device)
{
    journal::record("orvexGetTouchEnabled", device);
    return byteResult("orvexGetTouchEnabled");
}

void orvexSetTouchSystemRedirectionEnabled(int device, std::uint8_t a)
{
    journal::record("orvexSetTouchSystemRedirectionEnabled", device, a);
}

std::uint8_t orvexGetTouchSystemRedirectionEnabled(int device)
{
    journal::record("orvexGetTouchSystemRedirectionEnabled", device);
    return byteResult("orvexGetTouchSystemRedirectionEnabled");
}

int orvexOpenSynchronousChannel(int device, DataCallback callback, void *context)
{
    journal::record("orvexOpenSynchronousChannel", device, address(callback),
                    static_cast<const void *>(context));
    return boards::result("orvexOpenSynchronousChannel");
}

void orvexCloseSynchronousChannel(int device, int channel)
{
    journal::record("orvexCloseSynchronousChannel", device, channel);
}

int orvexReadSynchronousPacket(int device, int channel, void *buffer, int size, unsigned int timeout)
{
    journal::record("orvexReadSynchronousPacket", device, channel, static_cast<const void *>(buffer), size,
                    timeout);
    return boards::result("orvexReadSynchronousPacket");
}

int orvexSetCalibrationMode(int device, std::uint8_t mode)
{
    journal::record("orvexSetCalibrationMode", device, mode);
    return boards::result("orvexSetCalibrationMode");
}

void orvexSetCalibrationData(int device, void *data)
{
    journal::record("orvexSetCalibrationData", device, static_cast<const void *>(data));
}

void orvexSetWirelessCalibrationData(int device, void *data)
{
    journal::record("orvexSetWirelessCalibrationData", device, static_cast<const void *>(data));
}

void orvexSetCalibrationDataEx(int device, std::uint8_t a, std::uint8_t b, void *data)
{
    journal::record("orvexSetCalibrationDataEx", device, a, b, static_cast<const void *>(data));
}

void orvexGetCalibrationPoints(int device, int *columns, int *rows)
{
    journal::record("orvexGetCalibrationPoints", device, static_cast<const void *>(columns),
                    static_cast<const void *>(rows));
    *columns = 3;
    *rows = 5;
}

void orvexLibraryVersionNumber(unsigned char *a, unsigned char *b, unsigned int *c, unsigned int *d)
{
    journal::record("orvexLibraryVersionNumber", static_cast<const void *>(a), static_cast<const void *>(b),
                    static_cast<const void *>(c), static_cast<const void *>(d));
    *a = 5;
    *b = 6;
    *c = 70000;
    *d = 80000;
}

void orvexLock()
{
    journal::record("orvexLock");
}

void orvexUnlock()
{
    journal::record("orvexUnlock");
}

int orvexSerialGetConnected(int *port)
{
    journal::record("orvexSerialGetConnected", static_cast<const void *>(port));
    *port = 9;
    return boards::result("orvexSerialGetConnected");
}

int orvexSerialConnect(int port)
{
    journal::record("orvexSerialConnect", port);
    return boards::result("orvexSerialConnect");
}

int orvexSerialDisconnect()
{
    journal::record("orvexSerialDisconnect");
    return boards::result("orvexSerialDisconnect");
}

void orvexSerialSetStartupMode(int mode)
{
    journal::record("orvexSerialSetStartupMode", mode);
}

int orvexSerialGetStartupMode()
{
    journal::record("orvexSerialGetStartupMode");
    return boards::result("orvexSerialGetStartupMode");
}

void orvexSetDoubleClickDistance(int device, std::uint16_t distance)
{
    journal::record("orvexSetDoubleClickDistance", device, distance);
}

void orvexSetDriverDebugMode(int device, std::uint8_t mode, std::uint32_t mask)
{
    journal::record("orvexSetDriverDebugMode", device, mode, mask);
}

void orvexEcho(int device, std::uint8_t length, const unsigned char *data)
{
    journal::record("orvexEcho", device, length, static_cast<const void *>(data));
}

void orvexInject(int device, std::uint8_t length, const unsigned char *data)
{
    journal::record("orvexInject", device, length, static_cast<const void *>(data));
}

void orvexSendTouchPacketToSystem(int device, std::uint8_t length, const unsigned char *data)
{
    journal::record("orvexSendTouchPacketToSystem", device, length, static_cast<const void *>(data));
}

void orvexSetLATEDetection(int device, std::uint8_t mode)
{
    journal::record("orvexSetLATEDetection", device, mode);
}

int orvexGetLATEDetection(int device)
{
    journal::record("orvexGetLATEDetection", device);
    return boards::result("orvexGetLATEDetection");
}

int orvexIsSomethingOnBoard(int device)
{
    journal::record("orvexIsSomethingOnBoard", device);
    return boards::result("orvexIsSomethingOnBoard");
}

void orvexSetTwoFingerScroll(int device, std::uint8_t mode)
{
    journal::record("orvexSetTwoFingerScroll", device, mode);
}

void orvexReverseButtons(int device, std::uint8_t reversed)
{
    journal::record("orvexReverseButtons", device, reversed);
}

} // extern "C"
#pragma GCC visibility pop
