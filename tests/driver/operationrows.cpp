#include "driver/operationrows.h"

namespace operationrows {

namespace {

#define GIVES(operation) [](OrvexWrapper &wrapper) { return text(wrapper.operation); }
#define DOES(operation)                                                                                      \
    [](OrvexWrapper &wrapper) {                                                                              \
        wrapper.operation;                                                                                   \
        return QString();                                                                                    \
    }

// clang-format off
const QVector<Row> rows{
    {"orvexAttach", 12, GIVES(Attach()),
     "orvexAttach()", "12", "0"},
    {"orvexDetach", 0, DOES(Detach()),
     "orvexDetach()", "", ""},
    {"orvexInterface", -7, GIVES(Interface()),
     "orvexInterface()", "-7", "0"},
    {"orvexSetCallback", 0, DOES(SetCallback(-5, onData, &context)),
     "orvexSetCallback(-5, @onData, @context)", "", ""},
    {"orvexClearCallback", 0, DOES(ClearCallback(6, onData, &context)),
     "orvexClearCallback(6, @onData, @context)", "", ""},
    {"orvexSetPnpCallback", 0, DOES(SetPnpCallback(onPlug, &context)),
     "orvexSetPnpCallback(@onPlug, @context)", "", ""},
    {"orvexClearCallback", 0, DOES(ClearPnpCallback(onPlug, &context)),
     "orvexClearCallback(0, @onPlug, @context)", "", ""},
    {"orvexSendCommand", 3, GIVES(SendCommand(2147483647, "A\xe9\r")),
     "orvexSendCommand(2147483647, \"A\\xe9\\x0d\")", "3", "-1"},
    {"orvexWritePacket", 4, GIVES(WritePacket(7, bytes, 3)),
     "orvexWritePacket(7, @bytes, 3)", "4", "-1"},
    {"orvexSetXferMask", 0, DOES(SetXferMask(7, 255)),
     "orvexSetXferMask(7, 255)", "", ""},
    {"orvexGetDeviceCount", 5, GIVES(GetDeviceCount()),
     "orvexGetDeviceCount()", "5", "0"},
    {"orvexEnumDeviceInfo", 1, GIVES(EnumDeviceInfo(4, &info)),
     "orvexEnumDeviceInfo(4, @info)", "true", "false"},
    {"orvexSetPointingDeviceDestination", 0, DOES(SetPointingDeviceDestination(7, 200, true, 201)),
     "orvexSetPointingDeviceDestination(7, 200, 1, 201)", "", ""},
    {"orvexSetPointingDeviceDestinationEx", 0, DOES(SetPointingDeviceDestinationEx(7, 200, false, 201, true)),
     "orvexSetPointingDeviceDestinationEx(7, 200, 0, 201, 1)", "", ""},
    {"orvexGetPointingDeviceDestination", 8, GIVES(GetPointingDeviceDestination(7, 255, true)),
     "orvexGetPointingDeviceDestination(7, 255, 1)", "8", "-1"},
    {"orvexSetTouchDestination", 0, DOES(SetTouchDestination(7, 200)),
     "orvexSetTouchDestination(7, 200)", "", ""},
    {"orvexSetTouchDestinationEx", 0, DOES(SetTouchDestinationEx(7, 200, true)),
     "orvexSetTouchDestinationEx(7, 200, 1)", "", ""},
    {"orvexGetTouchDestination", 9, GIVES(GetTouchDestination(7)),
     "orvexGetTouchDestination(7)", "9", "-1"},
    {"orvexSetTouchEnabled", 0, DOES(SetTouchEnabled(7, true)),
     "orvexSetTouchEnabled(7, 1)", "", ""},
    {"orvexGetTouchEnabled", 0, GIVES(GetTouchEnabled(7)),
     "orvexGetTouchEnabled(7)", "false", "true"},
    {"orvexSetTouchSystemRedirectionEnabled", 0, DOES(SetTouchSystemRedirectionEnabled(7, false)),
     "orvexSetTouchSystemRedirectionEnabled(7, 0)", "", ""},
    {"orvexGetTouchSystemRedirectionEnabled", 0, GIVES(GetTouchSystemRedirectionEnabled(7)),
     "orvexGetTouchSystemRedirectionEnabled(7)", "false", "true"},
    {"orvexSetLATEDetection", 0, DOES(SetLATEDetection(7, 128)),
     "orvexSetLATEDetection(7, 128)", "", ""},
    {"orvexGetLATEDetection", 10, GIVES(GetLATEDetection(7)),
     "orvexGetLATEDetection(7)", "10", "-1"},
    {"orvexIsSomethingOnBoard", 11, GIVES(IsSomethingOnBoard(7)),
     "orvexIsSomethingOnBoard(7)", "11", "0"},
    {"orvexSetTwoFingerScroll", 0, DOES(SetTwoFingerScroll(7, 129)),
     "orvexSetTwoFingerScroll(7, 129)", "", ""},
    {"orvexOpenSynchronousChannel", 12, GIVES(OpenSynchronousChannel(7, onData, &context)),
     "orvexOpenSynchronousChannel(7, @onData, @context)", "12", "-1"},
    {"orvexCloseSynchronousChannel", 0, DOES(CloseSynchronousChannel(7, -3)),
     "orvexCloseSynchronousChannel(7, -3)", "", ""},
    {"orvexReadSynchronousPacket", 13, GIVES(ReadSynchronousPacket(7, 2, bytes, 64, 4294967295U)),
     "orvexReadSynchronousPacket(7, 2, @bytes, 64, 4294967295)", "13", "-1"},
    {"orvexSetCalibrationMode", 14, GIVES(SetCalibrationMode(7, 130)),
     "orvexSetCalibrationMode(7, 130)", "14", "0"},
    {"orvexSetCalibrationData", 0, DOES(SetCalibrationData(7, bytes)),
     "orvexSetCalibrationData(7, @bytes)", "", ""},
    {"orvexSetCalibrationDataEx", 0, DOES(SetCalibrationDataEx(7, 131, 132, bytes)),
     "orvexSetCalibrationDataEx(7, 131, 132, @bytes)", "", ""},
    {"orvexSetWirelessCalibrationData", 0, DOES(SetWirelessCalibrationData(7, bytes)),
     "orvexSetWirelessCalibrationData(7, @bytes)", "", ""},
    {"orvexGetCalibrationPoints", 0, DOES(GetCalibrationPoints(7, &first, &second)),
     "orvexGetCalibrationPoints(7, @first, @second)", "", ""},
    {"orvexLibraryVersionNumber", 0, DOES(LibraryVersionNumber(&major, &minor, &release, &build)),
     "orvexLibraryVersionNumber(@major, @minor, @release, @build)", "", ""},
    {"orvexLock", 0, DOES(Lock()),
     "orvexLock()", "", ""},
    {"orvexUnlock", 0, DOES(Unlock()),
     "orvexUnlock()", "", ""},
    {"orvexSerialConnect", 15, GIVES(SerialConnect(4)),
     "orvexSerialConnect(4)", "15", "0"},
    {"orvexSerialDisconnect", 16, GIVES(SerialDisconnect()),
     "orvexSerialDisconnect()", "16", "0"},
    {"orvexSerialGetConnected", 17, GIVES(SerialGetConnected(first)),
     "orvexSerialGetConnected(@first)", "17", "0"},
    {"orvexSerialSetStartupMode", 0, DOES(SerialSetStartupMode(-2)),
     "orvexSerialSetStartupMode(-2)", "", ""},
    {"orvexSerialGetStartupMode", 18, GIVES(SerialGetStartupMode()),
     "orvexSerialGetStartupMode()", "18", "0"},
    {"orvexSetDoubleClickDistance", 0, DOES(SetDoubleClickDistance(7, 65535)),
     "orvexSetDoubleClickDistance(7, 65535)", "", ""},
    {"orvexSetDriverDebugMode", 0, DOES(SetDriverDebugMode(7, 133, 0xFFFFFFFF)),
     "orvexSetDriverDebugMode(7, 133, 4294967295)", "", ""},
    {"orvexEcho", 0, DOES(Echo(7, 255, bytes)),
     "orvexEcho(7, 255, @bytes)", "", ""},
    {"orvexInject", 0, DOES(Inject(7, 254, bytes)),
     "orvexInject(7, 254, @bytes)", "", ""},
    {"orvexSendTouchPacketToSystem", 0, DOES(SendTouchPacketToSystem(7, 253, bytes)),
     "orvexSendTouchPacketToSystem(7, 253, @bytes)", "", ""},
    {"orvexReverseButtons", 0, DOES(ReverseButtons(7, true)),
     "orvexReverseButtons(7, 1)", "", ""},
};
// clang-format on

#undef DOES
#undef GIVES

} // namespace

const QVector<Row> &all()
{
    return rows;
}

} // namespace operationrows
