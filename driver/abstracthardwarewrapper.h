#pragma once

#include "entrypoints.h"

/// Access to the boards: one operation for each entry point of the driver library.
///
/// An operation whose entry point is missing does nothing and returns the fixed value named with it.
/// Results are the library's own, passed on unchanged. All operations are called on the GUI thread.
class AbstractHardwareWrapper
{
public:
    virtual ~AbstractHardwareWrapper() = default;

    /// Loads the library, resolves its entry points and attaches; may be called again.
    /// \return what the library's attach returns; 0 when the library or its attach is missing
    virtual int Attach() = 0;
    virtual void Detach() = 0;
    /// \return 0 when missing
    virtual int Interface() = 0;
    virtual void SetCallback(int device, OrvexDataCallback callback, void *context) = 0;
    virtual void ClearCallback(int device, OrvexDataCallback callback, void *context) = 0;
    virtual void SetPnpCallback(OrvexPnpCallback callback, void *context) = 0;
    /// Forwards to the remover of data callbacks with device 0: the library has no other.
    virtual void ClearPnpCallback(OrvexPnpCallback callback, void *context) = 0;
    /// \param command Latin-1 text, sent unchanged
    /// \return -1 when missing
    virtual int SendCommand(int device, const char *command) = 0;
    /// \return -1 when missing
    virtual int WritePacket(int device, const void *data, int length) = 0;
    virtual void SetXferMask(int device, unsigned char mask) = 0;
    /// \return 0 when missing
    virtual int GetDeviceCount() = 0;
    /// \param index 0 to GetDeviceCount() - 1
    /// \return false when missing, or when the library could not fill the record
    virtual bool EnumDeviceInfo(int index, _ORVEX_DEVICE_INFO *info) = 0;
    virtual void SetPointingDeviceDestination(int device, unsigned char pen, bool toSystem,
                                              unsigned char destination) = 0;
    /// Falls back to SetPointingDeviceDestination() without the last argument.
    virtual void SetPointingDeviceDestinationEx(int device, unsigned char pen, bool toSystem,
                                                unsigned char destination, bool extended) = 0;
    /// \return -1 when missing
    virtual int GetPointingDeviceDestination(int device, unsigned char pen, bool toSystem) = 0;
    virtual void SetTouchDestination(int device, unsigned char destination) = 0;
    /// Falls back to SetTouchDestination() without the last argument.
    virtual void SetTouchDestinationEx(int device, unsigned char destination, bool extended) = 0;
    /// \return -1 when missing
    virtual int GetTouchDestination(int device) = 0;
    virtual void SetTouchEnabled(int device, bool enabled) = 0;
    /// \return true when missing; otherwise whether the library answered exactly 1
    virtual bool GetTouchEnabled(int device) = 0;
    virtual void SetTouchSystemRedirectionEnabled(int device, bool enabled) = 0;
    /// \return true when missing; otherwise whether the library answered exactly 1
    virtual bool GetTouchSystemRedirectionEnabled(int device) = 0;
    virtual void SetLATEDetection(int device, unsigned char mode) = 0;
    /// \return -1 when missing
    virtual int GetLATEDetection(int device) = 0;
    /// \return 0 when missing
    virtual int IsSomethingOnBoard(int device) = 0;
    virtual void SetTwoFingerScroll(int device, unsigned char mode) = 0;
    /// \return -1 when missing
    virtual int OpenSynchronousChannel(int device, OrvexDataCallback callback, void *context) = 0;
    virtual void CloseSynchronousChannel(int device, int channel) = 0;
    /// \return -1 when missing
    virtual int ReadSynchronousPacket(int device, int channel, void *buffer, int size,
                                      unsigned int timeout) = 0;
    /// \return 0 when missing
    virtual int SetCalibrationMode(int device, unsigned char mode) = 0;
    virtual void SetCalibrationData(int device, void *data) = 0;
    virtual void SetCalibrationDataEx(int device, unsigned char set, unsigned char kind, void *data) = 0;
    virtual void SetWirelessCalibrationData(int device, void *data) = 0;
    virtual void GetCalibrationPoints(int device, int *columns, int *rows) = 0;
    /// \return always 0: the entry point has no name that could be looked up
    virtual int GetHIDCoordinateReportMode(int device) = 0;
    /// Always does nothing: the entry point has no name that could be looked up.
    virtual void SetHIDCoordinateReportMode(int device, unsigned char mode) = 0;
    virtual void LibraryVersionNumber(unsigned char *major, unsigned char *minor, unsigned int *release,
                                      unsigned int *build) = 0;
    virtual void Lock() = 0;
    virtual void Unlock() = 0;
    /// \return 0 when missing
    virtual int SerialConnect(int port) = 0;
    /// \return 0 when missing
    virtual int SerialDisconnect() = 0;
    /// \return 0 when missing; `port` is then left alone
    virtual int SerialGetConnected(int &port) = 0;
    virtual void SerialSetStartupMode(int mode) = 0;
    /// \return 0 when missing
    virtual int SerialGetStartupMode() = 0;
    virtual void SetDoubleClickDistance(int device, unsigned short distance) = 0;
    virtual void SetDriverDebugMode(int device, unsigned char mode, unsigned int mask) = 0;
    virtual void Echo(int device, unsigned char length, const unsigned char *data) = 0;
    virtual void Inject(int device, unsigned char length, const unsigned char *data) = 0;
    virtual void SendTouchPacketToSystem(int device, unsigned char length, const unsigned char *data) = 0;
    virtual void ReverseButtons(int device, bool reversed) = 0;
};
