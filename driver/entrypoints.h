#pragma once

#include "driver/abstracthardwarewrapper.h"

// The entry points of the driver library. `bool` crosses the boundary as a byte, in both directions.

/// X(name, returns, parameters), in the order in which the binding keeps its pointers.
/// The two operations of the HID coordinate report mode have a pointer each, but no name to look up.
#define ORVEX_POINTERS(X)                                                                                    \
    X(orvexAttach, int, ())                                                                                  \
    X(orvexDetach, void, ())                                                                                 \
    X(orvexInterface, int, ())                                                                               \
    X(orvexSetCallback, void, (int device, OrvexDataCallback callback, void *context))                       \
    X(orvexClearCallback, void, (int device, OrvexDataCallback callback, void *context))                     \
    X(orvexSendCommand, int, (int device, const char *command))                                              \
    X(orvexWritePacket, int, (int device, const void *data, int length))                                     \
    X(orvexSetXferMask, void, (int device, std::uint8_t mask))                                               \
    X(orvexGetDeviceCount, int, ())                                                                          \
    X(orvexEnumDeviceInfo, std::uint8_t, (int index, _ORVEX_DEVICE_INFO *info))                              \
    X(orvexSetPnpCallback, void, (OrvexPnpCallback callback, void *context))                                 \
    X(orvexSetPointingDeviceDestination, void,                                                               \
      (int device, std::uint8_t pen, std::uint8_t toSystem, std::uint8_t destination))                       \
    X(orvexSetPointingDeviceDestinationEx, void,                                                             \
      (int device, std::uint8_t pen, std::uint8_t toSystem, std::uint8_t destination,                        \
       std::uint8_t extended))                                                                               \
    X(orvexGetPointingDeviceDestination, int, (int device, std::uint8_t pen, std::uint8_t toSystem))         \
    X(orvexSetTouchDestination, void, (int device, std::uint8_t destination))                                \
    X(orvexSetTouchDestinationEx, void, (int device, std::uint8_t destination, std::uint8_t extended))       \
    X(orvexGetTouchDestination, int, (int device))                                                           \
    X(orvexSetTouchEnabled, void, (int device, std::uint8_t enabled))                                        \
    X(orvexGetTouchEnabled, std::uint8_t, (int device))                                                      \
    X(orvexSetTouchSystemRedirectionEnabled, void, (int device, std::uint8_t enabled))                       \
    X(orvexGetTouchSystemRedirectionEnabled, std::uint8_t, (int device))                                     \
    X(orvexOpenSynchronousChannel, int, (int device, OrvexDataCallback callback, void *context))             \
    X(orvexCloseSynchronousChannel, void, (int device, int channel))                                         \
    X(orvexReadSynchronousPacket, int,                                                                       \
      (int device, int channel, void *buffer, int size, unsigned int timeout))                               \
    X(orvexSetCalibrationMode, int, (int device, std::uint8_t mode))                                         \
    X(orvexSetCalibrationData, void, (int device, void *data))                                               \
    X(orvexSetWirelessCalibrationData, void, (int device, void *data))                                       \
    X(orvexSetCalibrationDataEx, void, (int device, std::uint8_t set, std::uint8_t kind, void *data))        \
    X(orvexGetCalibrationPoints, void, (int device, int *columns, int *rows))                                \
    X(getHidCoordinateReportMode, int, (int device))                                                         \
    X(setHidCoordinateReportMode, void, (int device, std::uint8_t mode))                                     \
    X(orvexLibraryVersionNumber, void,                                                                       \
      (unsigned char *major, unsigned char *minor, unsigned int *release, unsigned int *build))              \
    X(orvexLock, void, ())                                                                                   \
    X(orvexUnlock, void, ())                                                                                 \
    X(orvexSerialGetConnected, int, (int *port))                                                             \
    X(orvexSerialConnect, int, (int port))                                                                   \
    X(orvexSerialDisconnect, int, ())                                                                        \
    X(orvexSerialSetStartupMode, void, (int mode))                                                           \
    X(orvexSerialGetStartupMode, int, ())                                                                    \
    X(orvexSetDoubleClickDistance, void, (int device, std::uint16_t distance))                               \
    X(orvexSetDriverDebugMode, void, (int device, std::uint8_t mode, std::uint32_t mask))                    \
    X(orvexEcho, void, (int device, std::uint8_t length, const unsigned char *data))                         \
    X(orvexInject, void, (int device, std::uint8_t length, const unsigned char *data))                       \
    X(orvexSendTouchPacketToSystem, void, (int device, std::uint8_t length, const unsigned char *data))      \
    X(orvexSetLATEDetection, void, (int device, std::uint8_t mode))                                          \
    X(orvexGetLATEDetection, int, (int device))                                                              \
    X(orvexIsSomethingOnBoard, int, (int device))                                                            \
    X(orvexSetTwoFingerScroll, void, (int device, std::uint8_t mode))                                        \
    X(orvexReverseButtons, void, (int device, std::uint8_t reversed))

/// X(name), in the order in which the names are looked up: 47, each of them on every attach.
#define ORVEX_LOOKUPS(X)                                                                                     \
    X(orvexAttach)                                                                                           \
    X(orvexDetach)                                                                                           \
    X(orvexInterface)                                                                                        \
    X(orvexSetCallback)                                                                                      \
    X(orvexClearCallback)                                                                                    \
    X(orvexSendCommand)                                                                                      \
    X(orvexWritePacket)                                                                                      \
    X(orvexSetXferMask)                                                                                      \
    X(orvexGetDeviceCount)                                                                                   \
    X(orvexEnumDeviceInfo)                                                                                   \
    X(orvexSetPnpCallback)                                                                                   \
    X(orvexSetPointingDeviceDestination)                                                                     \
    X(orvexSetPointingDeviceDestinationEx)                                                                   \
    X(orvexGetPointingDeviceDestination)                                                                     \
    X(orvexOpenSynchronousChannel)                                                                           \
    X(orvexCloseSynchronousChannel)                                                                          \
    X(orvexReadSynchronousPacket)                                                                            \
    X(orvexSetCalibrationMode)                                                                               \
    X(orvexSetCalibrationData)                                                                               \
    X(orvexSetCalibrationDataEx)                                                                             \
    X(orvexGetCalibrationPoints)                                                                             \
    X(orvexSetWirelessCalibrationData)                                                                       \
    X(orvexLibraryVersionNumber)                                                                             \
    X(orvexLock)                                                                                             \
    X(orvexUnlock)                                                                                           \
    X(orvexSerialConnect)                                                                                    \
    X(orvexSerialDisconnect)                                                                                 \
    X(orvexSerialGetConnected)                                                                               \
    X(orvexSerialSetStartupMode)                                                                             \
    X(orvexSerialGetStartupMode)                                                                             \
    X(orvexSetDoubleClickDistance)                                                                           \
    X(orvexSetDriverDebugMode)                                                                               \
    X(orvexEcho)                                                                                             \
    X(orvexInject)                                                                                           \
    X(orvexSendTouchPacketToSystem)                                                                          \
    X(orvexSetTouchDestination)                                                                              \
    X(orvexSetTouchDestinationEx)                                                                            \
    X(orvexGetTouchDestination)                                                                              \
    X(orvexSetTouchEnabled)                                                                                  \
    X(orvexGetTouchEnabled)                                                                                  \
    X(orvexSetTouchSystemRedirectionEnabled)                                                                 \
    X(orvexGetTouchSystemRedirectionEnabled)                                                                 \
    X(orvexSetLATEDetection)                                                                                 \
    X(orvexGetLATEDetection)                                                                                 \
    X(orvexIsSomethingOnBoard)                                                                               \
    X(orvexSetTwoFingerScroll)                                                                               \
    X(orvexReverseButtons)
