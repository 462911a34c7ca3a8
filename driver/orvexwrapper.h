#pragma once

#include "abstracthardwarewrapper.h"

/// Binding to the board maker's driver library "liborvexboardex.so.1", which is opened at run time.
///
/// Nothing is loaded before the first Attach(). Each Attach() looks up every name again, so a library that
/// was missing can be found later. Without the library every operation returns its fallback.
class OrvexWrapper : public AbstractHardwareWrapper
{
public:
    OrvexWrapper() = default;
    /// Detaches once more and closes the library.
    ~OrvexWrapper() override;

    OrvexWrapper(const OrvexWrapper &) = delete;
    OrvexWrapper &operator=(const OrvexWrapper &) = delete;

    /// Writes the loader's message to standard error when the library can't be opened.
    int Attach() override;
    void Detach() override;
    int Interface() override;
    void SetCallback(int device, OrvexDataCallback callback, void *context) override;
    void ClearCallback(int device, OrvexDataCallback callback, void *context) override;
    void SetPnpCallback(OrvexPnpCallback callback, void *context) override;
    void ClearPnpCallback(OrvexPnpCallback callback, void *context) override;
    int SendCommand(int device, const char *command) override;
    int WritePacket(int device, const void *data, int length) override;
    void SetXferMask(int device, unsigned char mask) override;
    int GetDeviceCount() override;
    bool EnumDeviceInfo(int index, _ORVEX_DEVICE_INFO *info) override;
    void SetPointingDeviceDestination(int device, unsigned char pen, bool toSystem,
                                      unsigned char destination) override;
    void SetPointingDeviceDestinationEx(int device, unsigned char pen, bool toSystem,
                                        unsigned char destination, bool extended) override;
    int GetPointingDeviceDestination(int device, unsigned char pen, bool toSystem) override;
    void SetTouchDestination(int device, unsigned char destination) override;
    void SetTouchDestinationEx(int device, unsigned char destination, bool extended) override;
    int GetTouchDestination(int device) override;
    void SetTouchEnabled(int device, bool enabled) override;
    bool GetTouchEnabled(int device) override;
    void SetTouchSystemRedirectionEnabled(int device, bool enabled) override;
    bool GetTouchSystemRedirectionEnabled(int device) override;
    void SetLATEDetection(int device, unsigned char mode) override;
    int GetLATEDetection(int device) override;
    int IsSomethingOnBoard(int device) override;
    void SetTwoFingerScroll(int device, unsigned char mode) override;
    int OpenSynchronousChannel(int device, OrvexDataCallback callback, void *context) override;
    void CloseSynchronousChannel(int device, int channel) override;
    int ReadSynchronousPacket(int device, int channel, void *buffer, int size, unsigned int timeout) override;
    int SetCalibrationMode(int device, unsigned char mode) override;
    void SetCalibrationData(int device, void *data) override;
    void SetCalibrationDataEx(int device, unsigned char set, unsigned char kind, void *data) override;
    void SetWirelessCalibrationData(int device, void *data) override;
    void GetCalibrationPoints(int device, int *columns, int *rows) override;
    int GetHIDCoordinateReportMode(int device) override;
    void SetHIDCoordinateReportMode(int device, unsigned char mode) override;
    void LibraryVersionNumber(unsigned char *major, unsigned char *minor, unsigned int *release,
                              unsigned int *build) override;
    void Lock() override;
    void Unlock() override;
    int SerialConnect(int port) override;
    int SerialDisconnect() override;
    int SerialGetConnected(int &port) override;
    void SerialSetStartupMode(int mode) override;
    int SerialGetStartupMode() override;
    void SetDoubleClickDistance(int device, unsigned short distance) override;
    void SetDriverDebugMode(int device, unsigned char mode, unsigned int mask) override;
    void Echo(int device, unsigned char length, const unsigned char *data) override;
    void Inject(int device, unsigned char length, const unsigned char *data) override;
    void SendTouchPacketToSystem(int device, unsigned char length, const unsigned char *data) override;
    void ReverseButtons(int device, bool reversed) override;

private:
    void lookUpEntryPoints();

    void *libraryHandle = nullptr;
#define DECLARE_POINTER(name, returns, fallback, parameters, arguments) returns(*name) parameters = nullptr;
    ORVEX_POINTERS(DECLARE_POINTER, DECLARE_POINTER)
#undef DECLARE_POINTER
};
