// Operations on a board that the tool has no control for yet: each calls its entry point and nothing else.
#include "calls.h"
#include "orvexwrapper.h"

namespace {

/// What a boolean getter of the library returns for true; any other byte is false.
constexpr std::uint8_t yes = 1;

} // namespace

void OrvexWrapper::SetPointingDeviceDestination(int device, unsigned char pen, bool toSystem,
                                                unsigned char destination)
{
    call(orvexSetPointingDeviceDestination, device, pen, toSystem, destination);
}

void OrvexWrapper::SetPointingDeviceDestinationEx(int device, unsigned char pen, bool toSystem,
                                                  unsigned char destination, bool extended)
{
    if (orvexSetPointingDeviceDestinationEx)
        call(orvexSetPointingDeviceDestinationEx, device, pen, toSystem, destination, extended);
    else
        SetPointingDeviceDestination(device, pen, toSystem, destination);
}

int OrvexWrapper::GetPointingDeviceDestination(int device, unsigned char pen, bool toSystem)
{
    return callOr(fallback::orvexGetPointingDeviceDestination(), orvexGetPointingDeviceDestination, device,
                  pen, toSystem);
}

void OrvexWrapper::SetTouchDestination(int device, unsigned char destination)
{
    call(orvexSetTouchDestination, device, destination);
}

void OrvexWrapper::SetTouchDestinationEx(int device, unsigned char destination, bool extended)
{
    if (orvexSetTouchDestinationEx)
        call(orvexSetTouchDestinationEx, device, destination, extended);
    else
        SetTouchDestination(device, destination);
}

int OrvexWrapper::GetTouchDestination(int device)
{
    return callOr(fallback::orvexGetTouchDestination(), orvexGetTouchDestination, device);
}

void OrvexWrapper::SetTouchEnabled(int device, bool enabled)
{
    call(orvexSetTouchEnabled, device, enabled);
}

bool OrvexWrapper::GetTouchEnabled(int device)
{
    return callOr(fallback::orvexGetTouchEnabled(), orvexGetTouchEnabled, device) == yes;
}

void OrvexWrapper::SetTouchSystemRedirectionEnabled(int device, bool enabled)
{
    call(orvexSetTouchSystemRedirectionEnabled, device, enabled);
}

bool OrvexWrapper::GetTouchSystemRedirectionEnabled(int device)
{
    return callOr(fallback::orvexGetTouchSystemRedirectionEnabled(), orvexGetTouchSystemRedirectionEnabled,
                  device) == yes;
}

void OrvexWrapper::SetLATEDetection(int device, unsigned char mode)
{
    call(orvexSetLATEDetection, device, mode);
}

int OrvexWrapper::GetLATEDetection(int device)
{
    return callOr(fallback::orvexGetLATEDetection(), orvexGetLATEDetection, device);
}

int OrvexWrapper::IsSomethingOnBoard(int device)
{
    return callOr(fallback::orvexIsSomethingOnBoard(), orvexIsSomethingOnBoard, device);
}

void OrvexWrapper::SetTwoFingerScroll(int device, unsigned char mode)
{
    call(orvexSetTwoFingerScroll, device, mode);
}

int OrvexWrapper::OpenSynchronousChannel(int device, OrvexDataCallback callback, void *context)
{
    return callOr(fallback::orvexOpenSynchronousChannel(), orvexOpenSynchronousChannel, device, callback,
                  context);
}

void OrvexWrapper::CloseSynchronousChannel(int device, int channel)
{
    call(orvexCloseSynchronousChannel, device, channel);
}

int OrvexWrapper::ReadSynchronousPacket(int device, int channel, void *buffer, int size, unsigned int timeout)
{
    return callOr(fallback::orvexReadSynchronousPacket(), orvexReadSynchronousPacket, device, channel, buffer,
                  size, timeout);
}

int OrvexWrapper::SetCalibrationMode(int device, unsigned char mode)
{
    return callOr(fallback::orvexSetCalibrationMode(), orvexSetCalibrationMode, device, mode);
}

void OrvexWrapper::SetCalibrationData(int device, void *data)
{
    call(orvexSetCalibrationData, device, data);
}

void OrvexWrapper::SetCalibrationDataEx(int device, unsigned char set, unsigned char kind, void *data)
{
    call(orvexSetCalibrationDataEx, device, set, kind, data);
}

void OrvexWrapper::SetWirelessCalibrationData(int device, void *data)
{
    call(orvexSetWirelessCalibrationData, device, data);
}

void OrvexWrapper::GetCalibrationPoints(int device, int *columns, int *rows)
{
    call(orvexGetCalibrationPoints, device, columns, rows);
}

int OrvexWrapper::GetHIDCoordinateReportMode(int device)
{
    return callOr(fallback::getHidCoordinateReportMode(), getHidCoordinateReportMode, device);
}

void OrvexWrapper::SetHIDCoordinateReportMode(int device, unsigned char mode)
{
    call(setHidCoordinateReportMode, device, mode);
}

void OrvexWrapper::LibraryVersionNumber(unsigned char *major, unsigned char *minor, unsigned int *release,
                                        unsigned int *build)
{
    call(orvexLibraryVersionNumber, major, minor, release, build);
}

void OrvexWrapper::Lock()
{
    call(orvexLock);
}

void OrvexWrapper::Unlock()
{
    call(orvexUnlock);
}

int OrvexWrapper::SerialConnect(int port)
{
    return callOr(fallback::orvexSerialConnect(), orvexSerialConnect, port);
}

int OrvexWrapper::SerialDisconnect()
{
    return callOr(fallback::orvexSerialDisconnect(), orvexSerialDisconnect);
}

int OrvexWrapper::SerialGetConnected(int &port)
{
    return callOr(fallback::orvexSerialGetConnected(), orvexSerialGetConnected, &port);
}

void OrvexWrapper::SerialSetStartupMode(int mode)
{
    call(orvexSerialSetStartupMode, mode);
}

int OrvexWrapper::SerialGetStartupMode()
{
    return callOr(fallback::orvexSerialGetStartupMode(), orvexSerialGetStartupMode);
}

void OrvexWrapper::SetDoubleClickDistance(int device, unsigned short distance)
{
    call(orvexSetDoubleClickDistance, device, distance);
}

void OrvexWrapper::SetDriverDebugMode(int device, unsigned char mode, unsigned int mask)
{
    call(orvexSetDriverDebugMode, device, mode, mask);
}

void OrvexWrapper::Echo(int device, unsigned char length, const unsigned char *data)
{
    call(orvexEcho, device, length, data);
}

void OrvexWrapper::Inject(int device, unsigned char length, const unsigned char *data)
{
    call(orvexInject, device, length, data);
}

void OrvexWrapper::SendTouchPacketToSystem(int device, unsigned char length, const unsigned char *data)
{
    call(orvexSendTouchPacketToSystem, device, length, data);
}

void OrvexWrapper::ReverseButtons(int device, bool reversed)
{
    call(orvexReverseButtons, device, reversed);
}
