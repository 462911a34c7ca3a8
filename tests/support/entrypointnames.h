#pragma once

#include <QStringList>

/// All entry points of a driver library, in the order in which the tool looks them up.
inline const QStringList entryPointNames =
    QString("orvexAttach orvexDetach orvexInterface orvexSetCallback orvexClearCallback orvexSendCommand "
            "orvexWritePacket orvexSetXferMask orvexGetDeviceCount orvexEnumDeviceInfo orvexSetPnpCallback "
            "orvexSetPointingDeviceDestination orvexSetPointingDeviceDestinationEx "
            "orvexGetPointingDeviceDestination orvexOpenSynchronousChannel orvexCloseSynchronousChannel "
            "orvexReadSynchronousPacket orvexSetCalibrationMode orvexSetCalibrationData "
            "orvexSetCalibrationDataEx orvexGetCalibrationPoints orvexSetWirelessCalibrationData "
            "orvexLibraryVersionNumber orvexLock orvexUnlock orvexSerialConnect orvexSerialDisconnect "
            "orvexSerialGetConnected orvexSerialSetStartupMode orvexSerialGetStartupMode "
            "orvexSetDoubleClickDistance orvexSetDriverDebugMode orvexEcho orvexInject "
            "orvexSendTouchPacketToSystem orvexSetTouchDestination orvexSetTouchDestinationEx "
            "orvexGetTouchDestination orvexSetTouchEnabled orvexGetTouchEnabled "
            "orvexSetTouchSystemRedirectionEnabled orvexGetTouchSystemRedirectionEnabled "
            "orvexSetLATEDetection orvexGetLATEDetection orvexIsSomethingOnBoard orvexSetTwoFingerScroll "
            "orvexReverseButtons")
        .split(' ');
