#pragma once

#include <functional>
#include <QMap>
#include <QVariant>

#include "orvexwrapper.h"
#include "support/driverlibrary.h"

// The operations of the binding, each with its arguments and results.

namespace operations {

inline _ORVEX_DEVICE_INFO info{};
inline unsigned char bytes[840] = {1, 2, 3};
inline int first = 0;
inline int second = 0;
inline unsigned char major = 0;
inline unsigned char minor = 0;
inline unsigned int release = 0;
inline unsigned int build = 0;
inline int context = 0;

inline void dataCallback(int, const unsigned char *, unsigned int, void *) {}
inline void plugCallback(void *) {}

// clang-format off
inline const QMap<QString, QString> addresses{
    {"dataCallback", addressText(&dataCallback)}, {"plugCallback", addressText(&plugCallback)},
    {"context", addressText(&context)}, {"bytes", addressText(bytes)}, {"info", addressText(&info)},
    {"first", addressText(&first)}, {"second", addressText(&second)}, {"major", addressText(&major)},
    {"minor", addressText(&minor)}, {"release", addressText(&release)}, {"build", addressText(&build)},
};
// clang-format on

/// One operation of the binding that has an entry point of the same name.
struct Operation
{
    const char *source; ///< its call, as it stands below
    /// Calls it; what it returns as text, empty for nothing.
    std::function<QString(OrvexWrapper &)> call;
    int result = 0;                ///< what the library answers
    const char *returned = "";     ///< with the entry point present
    const char *withoutEntry = ""; ///< with the entry point missing

    QByteArray entryPoint() const { return QByteArray("orvex") + QByteArray(source).split('(').first(); }

    /// The call as the library writes it down: addresses in the place of names, booleans as bytes.
    QString logged() const
    {
        QString text = "orvex" + QString(source);
        text.replace("true", "1").replace("false", "0").remove('&');
        for (auto address = addresses.cbegin(); address != addresses.cend(); ++address)
            text.replace(address.key(), address.value());
        return text;
    }
};

// clang-format off
#define DOES(operation) #operation, [](OrvexWrapper &wrapper) { wrapper.operation; return QString(); }
#define GIVES(operation) #operation, [](OrvexWrapper &wrapper) { return QVariant(wrapper.operation).toString(); }

// In the order of the interface.
inline const QVector<Operation> all{
    {GIVES(Attach()), 12, "12", "0"},
    {DOES(Detach())},
    {GIVES(Interface()), -7, "-7", "0"},
    {DOES(SetCallback(-5, dataCallback, &context))},
    {DOES(ClearCallback(6, dataCallback, &context))},
    {DOES(SetPnpCallback(plugCallback, &context))},
    {GIVES(SendCommand(2147483647, "A\xe9\x0d")), 3, "3", "-1"},
    {GIVES(WritePacket(7, bytes, 3)), 4, "4", "-1"},
    {DOES(SetXferMask(7, 255))},
    {GIVES(GetDeviceCount()), 5, "5", "0"},
    {GIVES(EnumDeviceInfo(4, &info)), 1, "true", "false"},
    {DOES(SetPointingDeviceDestination(7, 200, true, 201))},
    {DOES(SetPointingDeviceDestinationEx(7, 200, false, 201, true))},
    {GIVES(GetPointingDeviceDestination(7, 255, true)), 8, "8", "-1"},
    {DOES(SetTouchDestination(7, 200))},
    {DOES(SetTouchDestinationEx(7, 200, true))},
    {GIVES(GetTouchDestination(7)), 9, "9", "-1"},
    {DOES(SetTouchEnabled(7, true))},
    {GIVES(GetTouchEnabled(7)), 0, "false", "true"},
    {DOES(SetTouchSystemRedirectionEnabled(7, false))},
    {GIVES(GetTouchSystemRedirectionEnabled(7)), 0, "false", "true"},
    {DOES(SetLATEDetection(7, 128))},
    {GIVES(GetLATEDetection(7)), 10, "10", "-1"},
    {GIVES(IsSomethingOnBoard(7)), 11, "11", "0"},
    {DOES(SetTwoFingerScroll(7, 129))},
    {GIVES(OpenSynchronousChannel(7, dataCallback, &context)), 12, "12", "-1"},
    {DOES(CloseSynchronousChannel(7, -3))},
    {GIVES(ReadSynchronousPacket(7, 2, bytes, 64, 4294967295)), 13, "13", "-1"},
    {GIVES(SetCalibrationMode(7, 130)), 14, "14", "0"},
    {DOES(SetCalibrationData(7, bytes))},
    {DOES(SetCalibrationDataEx(7, 131, 132, bytes))},
    {DOES(SetWirelessCalibrationData(7, bytes))},
    {DOES(GetCalibrationPoints(7, &first, &second))},
    {DOES(LibraryVersionNumber(&major, &minor, &release, &build))},
    {DOES(Lock())},
    {DOES(Unlock())},
    {GIVES(SerialConnect(4)), 15, "15", "0"},
    {GIVES(SerialDisconnect()), 16, "16", "0"},
    {GIVES(SerialGetConnected(first)), 17, "17", "0"},
    {DOES(SerialSetStartupMode(-2))},
    {GIVES(SerialGetStartupMode()), 18, "18", "0"},
    {DOES(SetDoubleClickDistance(7, 65535))},
    {DOES(SetDriverDebugMode(7, 133, 4294967295))},
    {DOES(Echo(7, 255, bytes))},
    {DOES(Inject(7, 254, bytes))},
    {DOES(SendTouchPacketToSystem(7, 253, bytes))},
    {DOES(ReverseButtons(7, true))},
};
// clang-format on

#undef GIVES
#undef DOES

} // namespace operations
