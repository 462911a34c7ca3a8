#pragma once

#include <cstdint>

// What crosses the boundary to the board maker's driver library. `bool` crosses it as a byte, in both
// directions.

/// Name under which the dynamic loader finds the library.
inline constexpr char orvexLibraryName[] = "liborvexboardex.so.1";

/// Called by the driver library on a thread of its own for each report of a board.
using OrvexDataCallback = void (*)(int device, const unsigned char *data, unsigned int length, void *context);

/// Called by the driver library on a thread of its own when boards are plugged in or out.
using OrvexPnpCallback = void (*)(void *context);

/// The driver library's record of one board. The caller zero-fills it and sets `recordKind`;
/// the library fills in the rest, of which only the device id is known here.
struct _ORVEX_DEVICE_INFO
{
    std::uint32_t recordKind; ///< set to `deviceInfoKind` by the caller
    std::uint8_t reserved4[16];
    std::int32_t deviceId; ///< names the board in every per-device operation
    std::uint8_t reserved24[816];
};
static_assert(sizeof(_ORVEX_DEVICE_INFO) == 840, "the driver library writes 840 bytes");

inline constexpr std::uint32_t deviceInfoKind = 6;

/// Mask of SetDriverDebugMode() with all bits set.
inline constexpr unsigned int everyDebugBit = 0xFFFFFFFF;

/// X(name, returns, fallback, parameters, arguments), in the order in which the binding keeps its pointers.
/// The fallback is what the binding returns where the name is missing; 0 where it returns nothing.
/// UNNAMED: the two operations of the HID coordinate report mode, which have a pointer and no name to look
/// up.
#define ORVEX_POINTERS(X, UNNAMED)                                                                           \
    X(orvexAttach, int, 0, (), ())                                                                           \
    X(orvexDetach, void, 0, (), ())                                                                          \
    X(orvexInterface, int, 0, (), ())                                                                        \
    X(orvexSetCallback, void, 0, (int device, OrvexDataCallback callback, void *context),                    \
      (device, callback, context))                                                                           \
    X(orvexClearCallback, void, 0, (int device, OrvexDataCallback callback, void *context),                  \
      (device, callback, context))                                                                           \
    X(orvexSendCommand, int, -1, (int device, const char *command), (device, command))                       \
    X(orvexWritePacket, int, -1, (int device, const void *data, int length), (device, data, length))         \
    X(orvexSetXferMask, void, 0, (int device, std::uint8_t mask), (device, mask))                            \
    X(orvexGetDeviceCount, int, 0, (), ())                                                                   \
    X(orvexEnumDeviceInfo, std::uint8_t, 0, (int index, _ORVEX_DEVICE_INFO *info), (index, info))            \
    X(orvexSetPnpCallback, void, 0, (OrvexPnpCallback callback, void *context), (callback, context))         \
    X(orvexSetPointingDeviceDestination, void, 0,                                                            \
      (int device, std::uint8_t pen, std::uint8_t toSystem, std::uint8_t destination),                       \
      (device, pen, toSystem, destination))                                                                  \
    X(orvexSetPointingDeviceDestinationEx, void, 0,                                                          \
      (int device, std::uint8_t pen, std::uint8_t toSystem, std::uint8_t destination,                        \
       std::uint8_t extended),                                                                               \
      (device, pen, toSystem, destination, extended))                                                        \
    X(orvexGetPointingDeviceDestination, int, -1, (int device, std::uint8_t pen, std::uint8_t toSystem),     \
      (device, pen, toSystem))                                                                               \
    X(orvexSetTouchDestination, void, 0, (int device, std::uint8_t destination), (device, destination))      \
    X(orvexSetTouchDestinationEx, void, 0, (int device, std::uint8_t destination, std::uint8_t extended),    \
      (device, destination, extended))                                                                       \
    X(orvexGetTouchDestination, int, -1, (int device), (device))                                             \
    X(orvexSetTouchEnabled, void, 0, (int device, std::uint8_t enabled), (device, enabled))                  \
    X(orvexGetTouchEnabled, std::uint8_t, 1, (int device), (device))                                         \
    X(orvexSetTouchSystemRedirectionEnabled, void, 0, (int device, std::uint8_t enabled), (device, enabled)) \
    X(orvexGetTouchSystemRedirectionEnabled, std::uint8_t, 1, (int device), (device))                        \
    X(orvexOpenSynchronousChannel, int, -1, (int device, OrvexDataCallback callback, void *context),         \
      (device, callback, context))                                                                           \
    X(orvexCloseSynchronousChannel, void, 0, (int device, int channel), (device, channel))                   \
    X(orvexReadSynchronousPacket, int, -1,                                                                   \
      (int device, int channel, void *buffer, int size, unsigned int timeout),                               \
      (device, channel, buffer, size, timeout))                                                              \
    X(orvexSetCalibrationMode, int, 0, (int device, std::uint8_t mode), (device, mode))                      \
    X(orvexSetCalibrationData, void, 0, (int device, void *data), (device, data))                            \
    X(orvexSetWirelessCalibrationData, void, 0, (int device, void *data), (device, data))                    \
    X(orvexSetCalibrationDataEx, void, 0, (int device, std::uint8_t set, std::uint8_t kind, void *data),     \
      (device, set, kind, data))                                                                             \
    X(orvexGetCalibrationPoints, void, 0, (int device, int *columns, int *rows), (device, columns, rows))    \
    UNNAMED(getHidCoordinateReportMode, int, 0, (int device), (device))                                      \
    UNNAMED(setHidCoordinateReportMode, void, 0, (int device, std::uint8_t mode), (device, mode))            \
    X(orvexLibraryVersionNumber, void, 0,                                                                    \
      (unsigned char *major, unsigned char *minor, unsigned int *release, unsigned int *build),              \
      (major, minor, release, build))                                                                        \
    X(orvexLock, void, 0, (), ())                                                                            \
    X(orvexUnlock, void, 0, (), ())                                                                          \
    X(orvexSerialGetConnected, int, 0, (int *port), (port))                                                  \
    X(orvexSerialConnect, int, 0, (int port), (port))                                                        \
    X(orvexSerialDisconnect, int, 0, (), ())                                                                 \
    X(orvexSerialSetStartupMode, void, 0, (int mode), (mode))                                                \
    X(orvexSerialGetStartupMode, int, 0, (), ())                                                             \
    X(orvexSetDoubleClickDistance, void, 0, (int device, std::uint16_t distance), (device, distance))        \
    X(orvexSetDriverDebugMode, void, 0, (int device, std::uint8_t mode, std::uint32_t mask),                 \
      (device, mode, mask))                                                                                  \
    X(orvexEcho, void, 0, (int device, std::uint8_t length, const unsigned char *data),                      \
      (device, length, data))                                                                                \
    X(orvexInject, void, 0, (int device, std::uint8_t length, const unsigned char *data),                    \
      (device, length, data))                                                                                \
    X(orvexSendTouchPacketToSystem, void, 0, (int device, std::uint8_t length, const unsigned char *data),   \
      (device, length, data))                                                                                \
    X(orvexSetLATEDetection, void, 0, (int device, std::uint8_t mode), (device, mode))                       \
    X(orvexGetLATEDetection, int, -1, (int device), (device))                                                \
    X(orvexIsSomethingOnBoard, int, 0, (int device), (device))                                               \
    X(orvexSetTwoFingerScroll, void, 0, (int device, std::uint8_t mode), (device, mode))                     \
    X(orvexReverseButtons, void, 0, (int device, std::uint8_t reversed), (device, reversed))

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

/// What an operation returns without its entry point, such as -1 for fallback::orvexSendCommand().
namespace fallback {
#define DEFINE_FALLBACK(name, returns, value, parameters, arguments)                                         \
    constexpr returns name()                                                                                 \
    {                                                                                                        \
        return static_cast<returns>(value);                                                                  \
    }
ORVEX_POINTERS(DEFINE_FALLBACK, DEFINE_FALLBACK)
#undef DEFINE_FALLBACK
} // namespace fallback
