-- Shows captures of Padscope in Wireshark 3.4 to 4.x.
--
-- For Lua 5.2 to 5.4: bits by the global `bit` alone, and numbers into texts by formats, since from 5.3 on a
-- number may be a float that shows as "3.0".

-- Printed from the tables of the program by tools/dissector/writedissector; a test compares.
-- tables: begin
-- name, type, bits, label, then names of values and the unit
local fieldList = {
    {"magic", "hexadecimal", 16, "Magic"},
    {"version", "unsigned", 8, "Version"},
    {"headerLength", "unsigned", 8, "Header length"},
    {"kind", "unsigned", 8, "Kind", names = {[1] = "report", [2] = "call", [3] = "return", [4] = "hotplug", [5] = "status", [6] = "mark", [7] = "board", [8] = "end", }},
    {"flags", "hexadecimal", 8, "Flags"},
    {"call", "unsigned", 16, "Call", names = {[0] = "none", [1] = "orvexAttach", [2] = "orvexDetach", [3] = "orvexInterface", [4] = "orvexSetCallback", [5] = "orvexClearCallback", [6] = "orvexSendCommand", [7] = "orvexWritePacket", [8] = "orvexSetXferMask", [9] = "orvexGetDeviceCount", [10] = "orvexEnumDeviceInfo", [11] = "orvexSetPnpCallback", [12] = "orvexSetPointingDeviceDestination", [13] = "orvexSetPointingDeviceDestinationEx", [14] = "orvexGetPointingDeviceDestination", [15] = "orvexOpenSynchronousChannel", [16] = "orvexCloseSynchronousChannel", [17] = "orvexReadSynchronousPacket", [18] = "orvexSetCalibrationMode", [19] = "orvexSetCalibrationData", [20] = "orvexSetCalibrationDataEx", [21] = "orvexGetCalibrationPoints", [22] = "orvexSetWirelessCalibrationData", [23] = "orvexLibraryVersionNumber", [24] = "orvexLock", [25] = "orvexUnlock", [26] = "orvexSerialConnect", [27] = "orvexSerialDisconnect", [28] = "orvexSerialGetConnected", [29] = "orvexSerialSetStartupMode", [30] = "orvexSerialGetStartupMode", [31] = "orvexSetDoubleClickDistance", [32] = "orvexSetDriverDebugMode", [33] = "orvexEcho", [34] = "orvexInject", [35] = "orvexSendTouchPacketToSystem", [36] = "orvexSetTouchDestination", [37] = "orvexSetTouchDestinationEx", [38] = "orvexGetTouchDestination", [39] = "orvexSetTouchEnabled", [40] = "orvexGetTouchEnabled", [41] = "orvexSetTouchSystemRedirectionEnabled", [42] = "orvexGetTouchSystemRedirectionEnabled", [43] = "orvexSetLATEDetection", [44] = "orvexGetLATEDetection", [45] = "orvexIsSomethingOnBoard", [46] = "orvexSetTwoFingerScroll", [47] = "orvexReverseButtons", }},
    {"board", "signed", 32, "Board"},
    {"result", "signed", 32, "Result"},
    {"sequence", "unsigned", 64, "Sequence"},
    {"session", "hexadecimal", 32, "Session"},
    {"thread", "unsigned", 32, "Thread"},
    {"link", "unsigned", 32, "Link"},
    {"lost", "unsigned", 32, "Lost"},
    {"signal1.reportWord8", "unsigned", 16, "Report word 8"},
    {"signal1.reportWord10", "unsigned", 16, "Report word 10"},
    {"signal1.xFine0", "signed", 16, "X Fine 0"},
    {"signal1.xFine60", "signed", 16, "X Fine 60"},
    {"signal1.xFine120", "signed", 16, "X Fine 120"},
    {"signal1.yFine0", "signed", 16, "Y Fine 0"},
    {"signal1.yFine60", "signed", 16, "Y Fine 60"},
    {"signal1.yFine120", "signed", 16, "Y Fine 120"},
    {"signal1.xCoarse0", "signed", 16, "X Crse 0"},
    {"signal1.xCoarse60", "signed", 16, "X Crse 60"},
    {"signal1.xCoarse120", "signed", 16, "X Crse 120"},
    {"signal1.yCoarse0", "signed", 16, "Y Crse 0"},
    {"signal1.yCoarse60", "signed", 16, "Y Crse 60"},
    {"signal1.yCoarse120", "signed", 16, "Y Crse 120"},
    {"signal1.frequencyRaw", "signed", 16, "Freq"},
    {"signal2.raw0", "signed", 16, "Raw 0"},
    {"signal2.raw60", "signed", 16, "Raw 60"},
    {"signal2.raw120", "signed", 16, "Raw 120"},
    {"signal2.integrations", "unsigned", 8, "Integs"},
    {"signal2.norm0", "signed", 16, "Norm 0"},
    {"signal2.norm60", "signed", 16, "Norm 60"},
    {"signal2.norm120", "signed", 16, "Norm 120"},
    {"signal3.qualityFlag", "unsigned", 8, "Flag"},
    {"signal3.qualityPass", "unsigned", 8, "Pass"},
    {"signal3.averageQuality", "signed", 16, "AvQ"},
    {"signal3.minimumQuality", "signed", 16, "MinQ"},
    {"signal3.maximumQuality", "signed", 16, "MaxQ"},
    {"signal4.integrator0", "signed", 16, "0"},
    {"signal4.integrator60", "signed", 16, "60"},
    {"signal4.integrator120", "signed", 16, "120"},
    {"signal4.integrations", "unsigned", 8, "Integs"},
    {"signal5.integrator0", "signed", 16, "0"},
    {"signal5.integrator60", "signed", 16, "60"},
    {"signal5.integrator120", "signed", 16, "120"},
    {"signal5.integrations", "unsigned", 8, "Integs"},
    {"signal5.norm0", "signed", 16, "Norm 0"},
    {"signal5.norm60", "signed", 16, "Norm 60"},
    {"signal5.norm120", "signed", 16, "Norm 120"},
    {"signal6.qualityX", "signed", 16, "Q: X"},
    {"signal6.qualityY", "signed", 16, "Y"},
    {"signal6.qualityAverage", "signed", 16, "Avg"},
    {"signal6.qualityMinimum", "signed", 16, "Min"},
    {"signal6.qualityMaximum", "signed", 16, "Max"},
    {"signal6.riseX", "unsigned", 16, "Rise/Full X (first)"},
    {"signal6.fullX", "unsigned", 32, "Rise/Full X (second)"},
    {"signal6.riseY", "unsigned", 16, "Y (first)"},
    {"signal6.fullY", "unsigned", 32, "Y (second)"},
    {"phase.xRs0", "signed", 16, "X Rs 0"},
    {"phase.xRs60", "signed", 16, "X Rs 60"},
    {"phase.xRs120", "signed", 16, "X Rs 120"},
    {"phase.xFull0", "signed", 16, "X Full 0"},
    {"phase.xFull60", "signed", 16, "X Full 60"},
    {"phase.xFull120", "signed", 16, "X Full 120"},
    {"phase.yRs0", "signed", 16, "Y Rs 0"},
    {"phase.yRs60", "signed", 16, "Y Rs 60"},
    {"phase.yRs120", "signed", 16, "Y Rs 120"},
    {"phase.yFull0", "signed", 16, "Y Full 0"},
    {"phase.yFull60", "signed", 16, "Y Full 60"},
    {"phase.yFull120", "signed", 16, "Y Full 120"},
    {"phase.xRsCount", "unsigned", 8, "X Rs Num"},
    {"phase.yRsCount", "unsigned", 8, "Y Rs Num"},
    {"phase.xFnCount", "unsigned", 8, "X Fn Num"},
    {"phase.yFnCount", "unsigned", 8, "Y Fn Num"},
    {"phase.xQuality", "signed", 16, "X Q"},
    {"phase.yQuality", "signed", 16, "Y Q"},
    {"phase.dcOffset0", "signed", 16, "DC Offsets 0"},
    {"phase.dcOffset60", "signed", 16, "DC Offsets 60"},
    {"phase.dcOffset120", "signed", 16, "DC Offsets 120"},
    {"penIdentity.penKind", "unsigned", 16, "Pen", names = {[0] = "Teacher", [1] = "Student", }},
    {"penIdentity.quality", "signed", 16, "Q"},
    {"penIdentity.buttons", "signed", 16, "Button"},
    {"dualPen.penNumber", "unsigned", 16, "Pen"},
    {"dualPen.pen1X", "signed", 32, "first pen X"},
    {"dualPen.pen1Y", "signed", 32, "first pen Y"},
    {"dualPen.pen1Flags", "unsigned", 16, "first pen Flag"},
    {"dualPen.pen2X", "signed", 32, "second pen X"},
    {"dualPen.pen2Y", "signed", 32, "second pen Y"},
    {"dualPen.pen2Flags", "unsigned", 16, "second pen Flag"},
    {"position.quality", "unsigned", 16, "Q"},
    {"position.proximity", "unsigned", 16, "Px"},
    {"position.x", "signed", 32, "X"},
    {"position.y", "signed", 32, "Y"},
    {"position.fineX", "unsigned", 16, "Fine X"},
    {"position.fineY", "unsigned", 16, "Fine Y"},
    {"position.xPitchNumber", "unsigned", 16, "XPitchNo"},
    {"position.yPitchNumber", "unsigned", 16, "YPitchNo"},
    {"position.driveX", "unsigned", 16, "DriveX"},
    {"position.polarityX", "unsigned", 16, "PolX"},
    {"position.driveY", "unsigned", 16, "DriveY"},
    {"position.polarityY", "unsigned", 16, "PolY"},
    {"adc.adcRaw", "unsigned", 16, "Raw ADC"},
    {"adc.volts", "decimal", 16, "Voltage", unit = "V"},
    {"text.characters", "text", 0, "Characters"},
    {"call.device", "signed", 32, "Device"},
    {"call.callback", "unsigned", 32, "Callback"},
    {"call.command", "text", 32, "Command"},
    {"call.data", "bytes", 32, "Data"},
    {"call.length", "signed", 32, "Length"},
    {"call.mask", "unsigned", 32, "Mask"},
    {"call.index", "signed", 32, "Index"},
    {"call.info", "bytes", 32, "Info"},
    {"call.pen", "unsigned", 32, "Pen"},
    {"call.toSystem", "unsigned", 32, "To system"},
    {"call.destination", "unsigned", 32, "Destination"},
    {"call.extended", "unsigned", 32, "Extended"},
    {"call.channel", "signed", 32, "Channel"},
    {"call.buffer", "bytes", 32, "Buffer"},
    {"call.size", "signed", 32, "Size"},
    {"call.timeout", "unsigned", 32, "Timeout"},
    {"call.mode", "signed", 32, "Mode"},
    {"call.set", "unsigned", 32, "Set"},
    {"call.kind", "unsigned", 32, "Kind"},
    {"call.columns", "signed", 32, "Columns"},
    {"call.rows", "signed", 32, "Rows"},
    {"call.major", "unsigned", 32, "Major"},
    {"call.minor", "unsigned", 32, "Minor"},
    {"call.release", "unsigned", 32, "Release"},
    {"call.build", "unsigned", 32, "Build"},
    {"call.port", "signed", 32, "Port"},
    {"call.distance", "unsigned", 32, "Distance"},
    {"call.enabled", "unsigned", 32, "Enabled"},
    {"call.reversed", "unsigned", 32, "Reversed"},
    {"status.monotonic", "unsigned", 64, "Monotonic", unit = "ns"},
    {"status.real", "unsigned", 64, "Real", unit = "ns"},
    {"status.boot", "unsigned", 64, "Boot", unit = "ns"},
    {"status.localOffset", "signed", 32, "Local offset", unit = "s"},
    {"change.state", "unsigned", 32, "State", names = {[1] = "seen", [2] = "gone", }},
    {"change.index", "signed", 32, "Index"},
    {"end.reason", "unsigned", 32, "Reason", names = {[1] = "exit", [2] = "signal", [3] = "unknown", [4] = "slice", }},
    {"end.value", "signed", 32, "Value"},
    {"mark", "text", 0, "Mark"},
}
-- the header's fields, in the order of their bytes
local headerFields = {"magic", "version", "headerLength", "kind", "flags", "call", "board", "result", "sequence", "session", "thread", "link", "lost", }
local magic, version, headerSize, lostLink = 17488, 1, 40, 4294967295
local kinds = {Report = 1, Call = 2, Return = 3, Hotplug = 4, Status = 5, Mark = 6, Board = 7, End = 8, }
local flagNames = {{1, "board is valid"}, {2, "result is valid"}, {4, "within a call"}, {8, "payload cut"}, {16, "null pointer"}, {32, "size unknown, not read"}, {64, "from a replay"}, {128, "edited"}, }
local resultIsValid, withinCall = 2, 4
local layouts = {
    {prefix = "signal1.", report = "SignalReport", type = 47, subType = 1, sentLength = 40,
     first = "X Fine 0: {xFine0:5}   60: {xFine60:5}   120: {xFine120:5} / Y Fine  0: {yFine0:5}   60 {yFine60:5}   120: {yFine120:5} / X Crse 0: {xCoarse0:5}   60: {xCoarse60:5}   120: {xCoarse120:5} / Y Crse  0: {yCoarse0:5}   60 {yCoarse60:5}   120: {yCoarse120:5} / Freq {frequencyRaw:5}",
     second = "",
     fields = {
        {name = "reportWord8", offset = 8, width = 2},
        {name = "reportWord10", offset = 10, width = 2},
        {name = "xFine0", offset = 13, width = 2, isSigned = true},
        {name = "xFine60", offset = 15, width = 2, isSigned = true},
        {name = "xFine120", offset = 17, width = 2, isSigned = true},
        {name = "yFine0", offset = 19, width = 2, isSigned = true},
        {name = "yFine60", offset = 21, width = 2, isSigned = true},
        {name = "yFine120", offset = 23, width = 2, isSigned = true},
        {name = "xCoarse0", offset = 25, width = 2, isSigned = true},
        {name = "xCoarse60", offset = 27, width = 2, isSigned = true},
        {name = "xCoarse120", offset = 29, width = 2, isSigned = true},
        {name = "yCoarse0", offset = 31, width = 2, isSigned = true},
        {name = "yCoarse60", offset = 33, width = 2, isSigned = true},
        {name = "yCoarse120", offset = 35, width = 2, isSigned = true},
        {name = "frequencyRaw", offset = 37, width = 2, isSigned = true},
    }},
    {prefix = "signal2.", report = "SignalReport", type = 47, subType = 2, sentLength = 40,
     first = "Raw 0: {raw0:5}   60: {raw60:5}   120: {raw120:5} / Integs: {integrations:3}/ Norm 0: {norm0:5}   60 {norm60:5}   120: {norm120:5}",
     second = "",
     fields = {
        {name = "raw0", offset = 13, width = 2, isSigned = true},
        {name = "raw60", offset = 15, width = 2, isSigned = true},
        {name = "raw120", offset = 17, width = 2, isSigned = true},
        {name = "integrations", offset = 20, width = 1},
        {name = "norm0", offset = 22, width = 2, isSigned = true},
        {name = "norm60", offset = 24, width = 2, isSigned = true},
        {name = "norm120", offset = 26, width = 2, isSigned = true},
    }},
    {prefix = "signal3.", report = "SignalReport", type = 47, subType = 3, sentLength = 14,
     first = "Q: Flag {qualityFlag:2} Pass {qualityPass:2} AvQ {averageQuality:5} MinQ {minimumQuality:5} MaxQ {maximumQuality:5}",
     second = "",
     fields = {
        {name = "qualityFlag", offset = 3, width = 1},
        {name = "qualityPass", offset = 4, width = 1},
        {name = "averageQuality", offset = 6, width = 2, isSigned = true},
        {name = "minimumQuality", offset = 9, width = 2, isSigned = true},
        {name = "maximumQuality", offset = 12, width = 2, isSigned = true},
    }},
    {prefix = "signal4.", report = "SignalReport", type = 47, subType = 4, sentLength = 10,
     first = "0: {integrator0:5}  60: {integrator60:5}  120: {integrator120:5}  Integs: {integrations:3}",
     second = "",
     fields = {
        {name = "integrator0", offset = 3, width = 2, isSigned = true},
        {name = "integrator60", offset = 5, width = 2, isSigned = true},
        {name = "integrator120", offset = 7, width = 2, isSigned = true},
        {name = "integrations", offset = 9, width = 1},
    }},
    {prefix = "signal5.", report = "SignalReport", type = 47, subType = 5, sentLength = 16,
     first = "0: {integrator0:5}  60: {integrator60:5}  120: {integrator120:5}  Integs: {integrations:3} / Norm 0: {norm0:5}  60: {norm60:5}  120: {norm120:5}",
     second = "",
     fields = {
        {name = "integrator0", offset = 3, width = 2, isSigned = true},
        {name = "integrator60", offset = 5, width = 2, isSigned = true},
        {name = "integrator120", offset = 7, width = 2, isSigned = true},
        {name = "integrations", offset = 9, width = 1},
        {name = "norm0", offset = 10, width = 2, isSigned = true},
        {name = "norm60", offset = 12, width = 2, isSigned = true},
        {name = "norm120", offset = 14, width = 2, isSigned = true},
    }},
    {prefix = "signal6.", report = "SignalReport", type = 47, subType = 6, sentLength = 25,
     first = "Q: X {qualityX:5} Y {qualityY:5} Avg {qualityAverage:5} Min {qualityMinimum:5} Max {qualityMaximum:5}, Rise/Full X {riseX:5} / {fullX:10}   Y {riseY:5} / {fullY:10}",
     second = "",
     fields = {
        {name = "qualityX", offset = 3, width = 2, isSigned = true},
        {name = "qualityY", offset = 5, width = 2, isSigned = true},
        {name = "qualityAverage", offset = 7, width = 2, isSigned = true},
        {name = "qualityMinimum", offset = 9, width = 2, isSigned = true},
        {name = "qualityMaximum", offset = 11, width = 2, isSigned = true},
        {name = "riseX", offset = 13, width = 2},
        {name = "fullX", offset = 15, width = 4},
        {name = "riseY", offset = 19, width = 2},
        {name = "fullY", offset = 21, width = 4},
    }},
    {prefix = "phase.", report = "PhaseReport", type = 104, subType = 0, sentLength = 40,
     first = "X Rs 0: {xRs0:5}  60: {xRs60:5}  120: {xRs120:5} X Full 0: {xFull0:5}  60: {xFull60:5}  120: {xFull120:5}  Y Rs 0: {yRs0:5}  60: {yRs60:5}  120: {yRs120:5} Y Full 0: {yFull0:5}  60: {yFull60:5}  120: {yFull120:5}  ",
     second = "X Rs Num: {xRsCount:3}  Y Rs Num: {yRsCount:3}   X Fn Num {xFnCount:3} Y Fn Num {yFnCount:3}   X Q: {xQuality:5} Y Q: {yQuality:5}   DC Offsets: 0: {dcOffset0:5}  60: {dcOffset60:5}  120 {dcOffset120:5}",
     fields = {
        {name = "xRs0", offset = 2, width = 2, isSigned = true, isBigEndian = true},
        {name = "xRs60", offset = 4, width = 2, isSigned = true, isBigEndian = true},
        {name = "xRs120", offset = 6, width = 2, isSigned = true, isBigEndian = true},
        {name = "xFull0", offset = 8, width = 2, isSigned = true, isBigEndian = true},
        {name = "xFull60", offset = 10, width = 2, isSigned = true, isBigEndian = true},
        {name = "xFull120", offset = 12, width = 2, isSigned = true, isBigEndian = true},
        {name = "yRs0", offset = 14, width = 2, isSigned = true, isBigEndian = true},
        {name = "yRs60", offset = 16, width = 2, isSigned = true, isBigEndian = true},
        {name = "yRs120", offset = 18, width = 2, isSigned = true, isBigEndian = true},
        {name = "yFull0", offset = 20, width = 2, isSigned = true, isBigEndian = true},
        {name = "yFull60", offset = 22, width = 2, isSigned = true, isBigEndian = true},
        {name = "yFull120", offset = 24, width = 2, isSigned = true, isBigEndian = true},
        {name = "xRsCount", offset = 26, width = 1},
        {name = "yRsCount", offset = 27, width = 1},
        {name = "xFnCount", offset = 28, width = 1},
        {name = "yFnCount", offset = 29, width = 1},
        {name = "xQuality", offset = 30, width = 2, isSigned = true},
        {name = "yQuality", offset = 32, width = 2, isSigned = true},
        {name = "dcOffset0", offset = 34, width = 2, isSigned = true},
        {name = "dcOffset60", offset = 36, width = 2, isSigned = true},
        {name = "dcOffset120", offset = 38, width = 2, isSigned = true},
    }},
    {prefix = "penIdentity.", report = "PenIdentityReport", type = 162, subType = 0, sentLength = 9,
     first = "Q:       {quality:8}     Button:     {buttons:8} Pen:        {penKind}",
     second = "",
     fields = {
        {name = "penKind", offset = 3, width = 2, otherwise = "Unknown: %1"},
        {name = "quality", offset = 5, width = 2, isSigned = true},
        {name = "buttons", offset = 7, width = 2, isSigned = true},
    }},
    {prefix = "dualPen.", report = "DualPenReport", type = 163, subType = 0, sentLength = 26,
     first = "Pen {penNumber:2}: X: {pen1X:8} Y: {pen1Y:8} Flag {pen1Flags:8},  Pen {penNumber:2}: X: {pen2X:8} Y: {pen2Y:8} Flag {pen2Flags:8}",
     second = "",
     fields = {
        {name = "penNumber", offset = 2, width = 2},
        {name = "pen1X", offset = 4, width = 4, isSigned = true},
        {name = "pen1Y", offset = 8, width = 4, isSigned = true},
        {name = "pen1Flags", offset = 12, width = 2},
        {name = "pen2X", offset = 16, width = 4, isSigned = true},
        {name = "pen2Y", offset = 20, width = 4, isSigned = true},
        {name = "pen2Flags", offset = 24, width = 2},
    }},
    {prefix = "position.", report = "PositionReport", type = 164, subType = 0, sentLength = 31,
     first = "Q: {quality:5}  Px: {proximity:5} X: {x:8} Y: {y:8} Fine X: {fineX:5}   Fine Y: {fineY:5}   XPitchNo: {xPitchNumber:5} YPitchNo: {yPitchNumber:5}  DriveX: {driveX:5} PolX: {polarityX:5} DriveY: {driveY:5} PolY: {polarityY:5}",
     second = "",
     fields = {
        {name = "quality", offset = 3, width = 2},
        {name = "proximity", offset = 5, width = 2},
        {name = "x", offset = 7, width = 4, isSigned = true},
        {name = "y", offset = 11, width = 4, isSigned = true},
        {name = "fineX", offset = 15, width = 2},
        {name = "fineY", offset = 17, width = 2},
        {name = "xPitchNumber", offset = 19, width = 2},
        {name = "yPitchNumber", offset = 21, width = 2},
        {name = "driveX", offset = 23, width = 2},
        {name = "polarityX", offset = 25, width = 2},
        {name = "driveY", offset = 27, width = 2},
        {name = "polarityY", offset = 29, width = 2},
    }},
    {prefix = "adc.", report = "AdcReport", type = 119, subType = 12, sentLength = 52,
     first = "Raw ADC: {adcRaw}Voltage: {volts}V",
     second = "",
     fields = {
        {name = "adcRaw", offset = 3, width = 2, mask = 1023},
        {name = "volts", offset = 3, width = 2, mask = 1023, factor = 4.88, divisor = 1000},
    }},
}
local reportTypes = {
    [47] = {name = "SignalReport", hasLengthRule = true},
    [50] = {name = "TextReport"},
    [104] = {name = "PhaseReport", hasLengthRule = true},
    [119] = {name = "TextReport"},
    [162] = {name = "PenIdentityReport"},
    [163] = {name = "DualPenReport"},
    [164] = {name = "PositionReport"},
}
local textReport, textOrAdcReport, adcSubType, textOffset = 50, 119, 12, 2
local adcLengths = {[52] = true, [58] = true, }
-- the entry points; of each its arguments in the call, then in the return
local calls = {
    {name = "orvexAttach", {}, {}},
    {name = "orvexDetach", {}, {}},
    {name = "orvexInterface", {}, {}},
    {name = "orvexSetCallback", {{"device", "signed"}, {"callback", "listener"}, }, {}},
    {name = "orvexClearCallback", {{"device", "signed"}, {"callback", "listener"}, }, {}},
    {name = "orvexSendCommand", {{"device", "signed"}, {"command", "bytes"}, }, {}},
    {name = "orvexWritePacket", {{"device", "signed"}, {"data", "bytes"}, {"length", "signed"}, }, {}},
    {name = "orvexSetXferMask", {{"device", "signed"}, {"mask", "unsigned"}, }, {}},
    {name = "orvexGetDeviceCount", {}, {}},
    {name = "orvexEnumDeviceInfo", {{"index", "signed"}, }, {{"info", "record"}, }},
    {name = "orvexSetPnpCallback", {{"callback", "listener"}, }, {}},
    {name = "orvexSetPointingDeviceDestination", {{"device", "signed"}, {"pen", "unsigned"}, {"toSystem", "unsigned"}, {"destination", "unsigned"}, }, {}},
    {name = "orvexSetPointingDeviceDestinationEx", {{"device", "signed"}, {"pen", "unsigned"}, {"toSystem", "unsigned"}, {"destination", "unsigned"}, {"extended", "unsigned"}, }, {}},
    {name = "orvexGetPointingDeviceDestination", {{"device", "signed"}, {"pen", "unsigned"}, {"toSystem", "unsigned"}, }, {}},
    {name = "orvexOpenSynchronousChannel", {{"device", "signed"}, {"callback", "listener"}, }, {}},
    {name = "orvexCloseSynchronousChannel", {{"device", "signed"}, {"channel", "signed"}, }, {}},
    {name = "orvexReadSynchronousPacket", {{"device", "signed"}, {"channel", "signed"}, {"size", "signed"}, {"timeout", "unsigned"}, }, {{"buffer", "bytes"}, }},
    {name = "orvexSetCalibrationMode", {{"device", "signed"}, {"mode", "unsigned"}, }, {}},
    {name = "orvexSetCalibrationData", {{"device", "signed"}, }, {}},
    {name = "orvexSetCalibrationDataEx", {{"device", "signed"}, {"set", "unsigned"}, {"kind", "unsigned"}, }, {}},
    {name = "orvexGetCalibrationPoints", {{"device", "signed"}, }, {{"columns", "signed"}, {"rows", "signed"}, }},
    {name = "orvexSetWirelessCalibrationData", {{"device", "signed"}, }, {}},
    {name = "orvexLibraryVersionNumber", {}, {{"major", "unsigned"}, {"minor", "unsigned"}, {"release", "unsigned"}, {"build", "unsigned"}, }},
    {name = "orvexLock", {}, {}},
    {name = "orvexUnlock", {}, {}},
    {name = "orvexSerialConnect", {{"port", "signed"}, }, {}},
    {name = "orvexSerialDisconnect", {}, {}},
    {name = "orvexSerialGetConnected", {}, {{"port", "signed"}, }},
    {name = "orvexSerialSetStartupMode", {{"mode", "signed"}, }, {}},
    {name = "orvexSerialGetStartupMode", {}, {}},
    {name = "orvexSetDoubleClickDistance", {{"device", "signed"}, {"distance", "unsigned"}, }, {}},
    {name = "orvexSetDriverDebugMode", {{"device", "signed"}, {"mode", "unsigned"}, {"mask", "unsigned"}, }, {}},
    {name = "orvexEcho", {{"device", "signed"}, {"length", "unsigned"}, {"data", "bytes"}, }, {}},
    {name = "orvexInject", {{"device", "signed"}, {"length", "unsigned"}, {"data", "bytes"}, }, {}},
    {name = "orvexSendTouchPacketToSystem", {{"device", "signed"}, {"length", "unsigned"}, {"data", "bytes"}, }, {}},
    {name = "orvexSetTouchDestination", {{"device", "signed"}, {"destination", "unsigned"}, }, {}},
    {name = "orvexSetTouchDestinationEx", {{"device", "signed"}, {"destination", "unsigned"}, {"extended", "unsigned"}, }, {}},
    {name = "orvexGetTouchDestination", {{"device", "signed"}, }, {}},
    {name = "orvexSetTouchEnabled", {{"device", "signed"}, {"enabled", "unsigned"}, }, {}},
    {name = "orvexGetTouchEnabled", {{"device", "signed"}, }, {}},
    {name = "orvexSetTouchSystemRedirectionEnabled", {{"device", "signed"}, {"enabled", "unsigned"}, }, {}},
    {name = "orvexGetTouchSystemRedirectionEnabled", {{"device", "signed"}, }, {}},
    {name = "orvexSetLATEDetection", {{"device", "signed"}, {"mode", "unsigned"}, }, {}},
    {name = "orvexGetLATEDetection", {{"device", "signed"}, }, {}},
    {name = "orvexIsSomethingOnBoard", {{"device", "signed"}, }, {}},
    {name = "orvexSetTwoFingerScroll", {{"device", "signed"}, {"mode", "unsigned"}, }, {}},
    {name = "orvexReverseButtons", {{"device", "signed"}, {"reversed", "unsigned"}, }, {}},
}
-- kind, name and bytes of the numbers that a payload begins with
local payloadFields = {
    {5, "status.monotonic", 8},
    {5, "status.real", 8},
    {5, "status.boot", 8},
    {5, "status.localOffset", 4},
    {7, "change.state", 4},
    {7, "change.index", 4},
    {8, "end.reason", 4},
    {8, "end.value", 4},
}
-- tables: end

local isNew, padscope = pcall(Proto, "padscope", "Padscope")
if not isNew then
    return -- another copy, in Wireshark's folder, has been loaded before
end

-- Fields and expert items

local fields = {}
local fieldInfo = {}
for _, entry in ipairs(fieldList) do
    local name, kind, bits, label = entry[1], entry[2], entry[3], entry[4]
    local filterName = "padscope." .. name
    if kind == "text" then
        fields[name] = ProtoField.string(filterName, label)
    elseif kind == "bytes" then
        fields[name] = ProtoField.bytes(filterName, label)
    elseif kind == "decimal" then
        fields[name] = ProtoField.double(filterName, label)
    else
        local create = ProtoField[(kind == "signed" and "int" or "uint") .. bits]
        fields[name] = create(filterName, label, kind == "hexadecimal" and base.HEX or base.DEC, entry.names)
    end
    fieldInfo[name] = {isSigned = kind == "signed", isText = kind == "text", bits = bits, names = entry.names,
                       unit = entry.unit}
end
fields.call_in = ProtoField.framenum("padscope.call_in", "The call is in", base.NONE, frametype.REQUEST)
fields.return_in = ProtoField.framenum("padscope.return_in", "The return is in", base.NONE, frametype.RESPONSE)
padscope.fields = fields

local experts = {
    lost = ProtoExpert.new("padscope.expert.lost", "Lost before this packet",
                           expert.group.SEQUENCE, expert.severity.WARN),
    unreturned = ProtoExpert.new("padscope.expert.unreturned", "A call that never returned",
                                 expert.group.RESPONSE_CODE, expert.severity.WARN),
    returnMissing = ProtoExpert.new("padscope.expert.returnMissing", "The return was not recorded",
                                    expert.group.SEQUENCE, expert.severity.NOTE),
    nested = ProtoExpert.new("padscope.expert.nested", "A call within a call of the same thread",
                             expert.group.SEQUENCE, expert.severity.NOTE),
    unreadable = ProtoExpert.new("padscope.expert.unreadable", "A header that cannot be read",
                                 expert.group.UNDECODED, expert.severity.ERROR),
}
padscope.experts = experts

-- Bytes. Indices count from 0; a byte that is not there reads as zero.

local spans = {256, 65536, 16777216, 4294967296}

local function byteAt(bytes, index)
    return bytes:byte(index + 1) or 0
end

local function unsignedAt(bytes, index, width, isBigEndian)
    local value = 0
    for i = 0, width - 1 do
        value = value * 256 + byteAt(bytes, isBigEndian and index + i or index + width - 1 - i)
    end
    return value
end

local function withSign(value, width)
    if 2 * value >= spans[width] then
        return value - spans[width]
    end
    return value
end

local function signedAt(bytes, index)
    return withSign(unsignedAt(bytes, index, 4), 4)
end

local function longAt(bytes, index)
    return tostring(UInt64(unsignedAt(bytes, index, 4), unsignedAt(bytes, index + 4, 4)))
end

local function isSet(number, flag)
    return bit.band(number, flag) ~= 0
end

-- "%d" refuses 2^31 and above where Lua is built with a "long" of 32 bits.
local function decimal(number)
    return string.format("%.0f", number)
end

local function printable(bytes)
    return (bytes:gsub("[^\32-\126]", "."))
end

-- Bytes of the character at an index; 0 for a control character and for what is no UTF-8.
local function characterLength(bytes, index)
    local first = byteAt(bytes, index)
    if first < 128 then
        return first >= 32 and first ~= 127 and 1 or 0
    end
    local length = first < 0xE0 and 2 or first < 0xF0 and 3 or 4
    if first < 0xC2 or first > 0xF4 then
        return 0
    end
    local code = first % ({32, 16, 8})[length - 1]
    for i = index + 1, index + length - 1 do
        local byte = byteAt(bytes, i)
        if byte < 128 or byte >= 192 then
            return 0
        end
        code = code * 64 + byte % 64
    end
    local isSurrogate = code >= 0xD800 and code <= 0xDFFF
    return code >= ({0xA0, 0x800, 0x10000})[length - 1] and not isSurrogate and code <= 0x10FFFF and length or 0
end

local escapes = {["\r"] = "\\r", ["\n"] = "\\n", ["\\"] = "\\\\"}

-- As UTF-8 without control characters.
local function escaped(bytes)
    local parts, index = {}, 0
    while index < #bytes do
        local length = characterLength(bytes, index)
        local character = bytes:sub(index + 1, index + math.max(length, 1))
        parts[#parts + 1] = escapes[character] or length > 0 and character
            or string.format("\\x%02x", character:byte())
        index = index + #character
    end
    return table.concat(parts)
end

local function quoted(bytes)
    return '"' .. escaped(bytes):gsub('"', '\\"') .. '"'
end

local function appendUnit(item, name)
    if fieldInfo[name].unit then
        item:append_text(" " .. fieldInfo[name].unit)
    end
end

-- Reports

for _, layout in ipairs(layouts) do
    layout.byName = {}
    for _, field in ipairs(layout.fields) do
        layout.byName[field.name] = field
    end
end

local function isSentLength(reportType, length)
    for _, layout in ipairs(layouts) do
        if layout.type == reportType and layout.sentLength == length then
            return true
        end
    end
    return false
end

-- "raw", "text" or "row"
local function formOf(report)
    local length, reportType, subType = byteAt(report, 0), byteAt(report, 1), byteAt(report, 2)
    local rule = reportTypes[reportType]
    if not rule or (rule.hasLengthRule and not isSentLength(reportType, length)) then
        return "raw"
    end
    if reportType == textReport then
        return "text"
    end
    if reportType == textOrAdcReport and not (adcLengths[length] and subType == adcSubType) then
        return "text"
    end
    return "row"
end

local function layoutOf(report)
    local reportType, subType = byteAt(report, 1), byteAt(report, 2)
    for _, layout in ipairs(layouts) do
        if layout.type == reportType and (layout.subType == 0 or layout.subType == subType) then
            return layout
        end
    end
end

local function valueOf(field, report)
    local value = unsignedAt(report, field.offset, field.width, field.isBigEndian)
    if field.mask then
        value = bit.band(value, field.mask)
    end
    if field.isSigned then
        value = withSign(value, field.width)
    end
    if field.factor then
        value = value * field.factor / field.divisor
    end
    return value
end

local rowSeparator = "   " -- as in the Monitor

local function filled(layout, format, report)
    return (format:gsub("{(%w+):?(%d*)}", function(name, width)
        local field = layout.byName[name]
        local value = valueOf(field, report)
        if field.otherwise then
            local number = decimal(value)
            return fieldInfo[layout.prefix .. name].names[value] or (field.otherwise:gsub("%%1", number))
        end
        local text = field.factor and string.format("%.4g", value):gsub(",", ".") or decimal(value)
        return string.rep(" ", (tonumber(width) or 0) - #text) .. text
    end))
end

local function rawRow(report)
    local row = {printable(report), rowSeparator}
    for i = 1, #report do
        row[#row + 1] = string.format("%02x ", report:byte(i))
        if i > 1 and (i - 1) % 8 == 0 then
            row[#row + 1] = " "
        end
    end
    return table.concat(row)
end

local function reportRow(_, report)
    local form = formOf(report)
    if form == "text" then
        return printable(report:sub(textOffset + 1))
    end
    if form == "raw" then
        return rawRow(report)
    end
    local layout = layoutOf(report)
    if not layout then
        return ""
    end
    local row = filled(layout, layout.first, report)
    if layout.second ~= "" then
        row = row .. rowSeparator .. filled(layout, layout.second, report)
    end
    return row
end

-- What is cut off is not there.
local function addReport(packet, root, report)
    local form = formOf(report)
    if form == "text" then
        local range = packet.range(#report > textOffset and textOffset or 0)
        root:add(fields["text.characters"], range, printable(report:sub(textOffset + 1)))
    end
    local layout = form == "row" and layoutOf(report)
    if not layout then
        return
    end
    local title = layout.report
    if layout.subType > 0 then
        title = title .. ", sub-type " .. decimal(layout.subType)
    end
    local tree = root:add(packet.range(0), title)
    for _, field in ipairs(layout.fields) do
        if field.offset + field.width <= #report then
            local name = layout.prefix .. field.name
            local value = valueOf(field, report)
            if field.factor then
                -- 15 digits, as other programs print it
                value = tonumber(string.format("%.15g", value))
            end
            appendUnit(tree:add(fields[name], packet.range(field.offset, field.width), value), name)
        end
    end
end

-- Calls and returns

-- Those that are there. A text or a buffer may be cut.
local function argumentsOf(packet, payload)
    local call = calls[packet.call]
    local values, index = {}, 0
    for _, argument in ipairs(call and call[packet.kind == kinds.Return and 2 or 1] or {}) do
        local value = {name = argument[1], role = argument[2], index = index, length = 4}
        local left = #payload - index
        if left < (value.role == "record" and 1 or 4) then
            break
        end
        value.number = unsignedAt(payload, index, 4)
        if value.role == "record" then
            value.length = left
            value.bytes = payload:sub(index + 1)
        elseif value.role == "bytes" and value.number ~= 0xFFFFFFFF then
            value.length = 4 + math.min(value.number, left - 4)
            value.bytes = payload:sub(index + 5, index + value.length)
        end
        index = index + value.length
        values[#values + 1] = value
    end
    return values
end

local function argumentText(value)
    if value.role == "record" then
        return decimal(value.length) .. " bytes"
    elseif value.role == "bytes" then
        return value.bytes and quoted(value.bytes) or "null"
    elseif value.role == "listener" then
        return value.number == 0 and "null" or "listener " .. decimal(value.number)
    elseif value.role == "signed" then
        return decimal(withSign(value.number, 4))
    end
    return decimal(value.number)
end

local function callRow(packet, payload)
    local name = calls[packet.call] and calls[packet.call].name or "call " .. decimal(packet.call)
    local texts = {}
    for _, value in ipairs(argumentsOf(packet, payload)) do
        local text = argumentText(value)
        texts[#texts + 1] = packet.kind == kinds.Return and value.name .. ": " .. text or text
    end
    if packet.kind == kinds.Call then
        return name .. "(" .. table.concat(texts, ", ") .. ")"
    end
    local result = isSet(packet.flags, resultIsValid) and " = " .. decimal(packet.result) or ""
    table.insert(texts, 1, name .. "()" .. result)
    return table.concat(texts, ", ")
end

local function addArguments(packet, root, payload)
    for _, value in ipairs(argumentsOf(packet, payload)) do
        local name = "call." .. value.name
        local field, range = fields[name], packet.range(value.index, value.length)
        if value.role == "record" then
            root:add(field, range)
        elseif value.role ~= "bytes" then
            root:add(field, range, fieldInfo[name].isSigned and withSign(value.number, 4) or value.number)
        elseif value.bytes and fieldInfo[name].isText then
            root:add(field, range, escaped(value.bytes))
        elseif value.bytes and #value.bytes > 0 then
            root:add(field, packet.range(value.index + 4, #value.bytes))
        end
    end
end

-- What Padscope adds itself

local function addNumbers(packet, root, payload)
    local index = 0
    for _, field in ipairs(payloadFields) do
        if field[1] == packet.kind then
            if index + field[3] > #payload then
                return
            end
            appendUnit(root:add_le(fields[field[2]], packet.range(index, field[3])), field[2])
            index = index + field[3]
        end
    end
end

-- Reports of each board, counted from an index on; nothing if it lies behind the payload
local function countTexts(payload, index)
    local texts = {}
    for i = 1, unsignedAt(payload, index, 4) do
        local first = index + 4 + 28 * (i - 1)
        if first + 28 > #payload then
            break
        end
        texts[i] = string.format("board %d: %s delivered, %s recorded, %s lost", signedAt(payload, first),
                                 longAt(payload, first + 4), longAt(payload, first + 12), longAt(payload, first + 20))
    end
    return texts
end

local statusCountsIndex, endCountsIndex = 28, 8

local function withCounts(text, payload, index)
    for _, counts in ipairs(countTexts(payload, index)) do
        text = text .. ", " .. counts
    end
    return text
end

local function addCounts(packet, root, payload, index)
    for i, counts in ipairs(countTexts(payload, index)) do
        root:add(packet.range(index + 4 + 28 * (i - 1), 28), (counts:gsub("^b", "B")))
    end
end

local sliceEnd = 4 -- the recording went on

local rows = {
    [kinds.Report] = reportRow,
    [kinds.Call] = callRow,
    [kinds.Return] = callRow,
    [kinds.Hotplug] = function(packet)
        return "hot-plug notification, listener " .. decimal(packet.link)
    end,
    [kinds.Status] = function(_, payload)
        return #payload >= 32 and withCounts("status", payload, statusCountsIndex) or "status"
    end,
    [kinds.Mark] = function(_, payload)
        return "mark: " .. quoted(payload)
    end,
    [kinds.Board] = function(_, payload)
        if #payload < 8 then
            return "board"
        end
        if unsignedAt(payload, 0, 4) == 2 then
            return "gone"
        end
        local index = signedAt(payload, 4)
        return index < 0 and "seen" or "seen, index " .. decimal(index)
    end,
    [kinds.End] = function(_, payload)
        if #payload < 12 then
            return "end"
        end
        local reason, value = unsignedAt(payload, 0, 4), decimal(signedAt(payload, 4))
        local text = reason == 1 and "end: exit status " .. value
            or reason == 2 and "end: signal " .. value
            or reason == sliceEnd and "end: slice"
            or "end: unknown"
        return withCounts(text, payload, endCountsIndex)
    end,
}

local addPayload = {
    [kinds.Report] = addReport,
    [kinds.Call] = addArguments,
    [kinds.Return] = addArguments,
    [kinds.Status] = function(packet, root, payload)
        addNumbers(packet, root, payload)
        addCounts(packet, root, payload, statusCountsIndex)
    end,
    [kinds.Mark] = function(packet, root, payload)
        root:add(fields.mark, packet.range(0), escaped(payload))
    end,
    [kinds.Board] = addNumbers,
    [kinds.End] = function(packet, root, payload)
        addNumbers(packet, root, payload)
        addCounts(packet, root, payload, endCountsIndex)
    end,
}

-- Calls and their returns, found when a file is read for the first time

local sessions -- of each: calls that are open, by the low half of their sequence; its last loss; whether it has an end
local callOf   -- by the return's frame
local returnOf -- by the call's frame

local function forgetCalls()
    sessions, callOf, returnOf = {}, {}, {}
end
forgetCalls()
padscope.init = forgetCalls

local function pairUp(packet, payload, frame)
    local session = sessions[packet.session] or {openCalls = {}, lastLoss = 0}
    sessions[packet.session] = session
    local open = session.openCalls
    if packet.lost > 0 then
        session.lastLoss = frame
    end
    session.hasEnd = session.hasEnd or (packet.kind == kinds.End and unsignedAt(payload, 0, 4) ~= sliceEnd)
    if packet.kind == kinds.Call then
        open[packet.sequence] = frame
    elseif packet.kind == kinds.Return and packet.link ~= lostLink and open[packet.link] then
        callOf[frame] = open[packet.link]
        returnOf[open[packet.link]] = frame
        open[packet.link] = nil
    end
end

-- A return may have been lost, or lie behind the end of a slice.
local function isReturnMissing(packet, frame)
    local session = sessions[packet.session]
    return not session or session.lastLoss > frame or not session.hasEnd
end

local function addPair(packet, root, pinfo)
    local frame = pinfo.number
    if callOf[frame] then
        root:add(fields.call_in, callOf[frame]):set_generated()
    elseif returnOf[frame] then
        root:add(fields.return_in, returnOf[frame]):set_generated()
    elseif packet.kind == kinds.Call and pinfo.visited then
        root:add_proto_expert_info(isReturnMissing(packet, frame) and experts.returnMissing or experts.unreturned)
    end
    if packet.kind == kinds.Call and isSet(packet.flags, withinCall) then
        root:add_proto_expert_info(experts.nested)
    end
end

-- The packet

-- Adds those that are there, and returns all; of 64 bits the low half.
local function addHeader(tvb, bytes, root)
    local header, index = {}, 0
    for _, name in ipairs(headerFields) do
        local width = fieldInfo[name].bits / 8
        local kept = math.min(width, 4)
        header[name] = unsignedAt(bytes, index, kept)
        if fieldInfo[name].isSigned then
            header[name] = withSign(header[name], kept)
        end
        if index + width <= #bytes then
            local item = root:add_le(fields[name], tvb(index, width))
            if name == "flags" then
                for _, flag in ipairs(flagNames) do
                    if isSet(header.flags, flag[1]) then
                        item:append_text(", " .. flag[2])
                    end
                end
            end
        end
        index = index + width
    end
    return header
end

local function unreadableText(header, length)
    if header.version > version then
        return "A header of a later version"
    end
    local headerLength = header.headerLength
    if headerLength < headerSize or headerLength % 4 ~= 0 or headerLength > length then
        return "A header that is cut, or of an odd length"
    end
end

local function rowOf(packet, payload)
    local row = rows[packet.kind]
    local text = row and row(packet, payload) or "kind " .. decimal(packet.kind)
    if packet.isCut then
        text = "[cut] " .. text
    end
    if packet.lost > 0 then
        text = "[" .. decimal(packet.lost) .. " lost] " .. text
    end
    return text
end

local packetTypes = DissectorTable.get("wtap_encap")
local dissectorBefore = packetTypes:get_dissector(wtap.USER0)

-- What such a dissector stumbles over, it shows itself.
local function passOn(tvb, pinfo, tree)
    local isGood, used = pcall(function()
        return (dissectorBefore or Dissector.get("data")):call(tvb, pinfo, tree)
    end)
    return isGood and used or tvb:len()
end

function padscope.dissector(tvb, pinfo, tree)
    local bytes = tvb:len() > 0 and tvb:raw() or ""
    if #bytes < 4 or unsignedAt(bytes, 0, 2) ~= magic or byteAt(bytes, 2) == 0 then
        return passOn(tvb, pinfo, tree)
    end
    pinfo.cols.protocol = "Padscope"
    local root = tree:add(padscope, tvb())
    local packet = addHeader(tvb, bytes, root)
    local unreadable = unreadableText(packet, #bytes)
    if unreadable then
        pinfo.cols.info = unreadable
        root:add_proto_expert_info(experts.unreadable, unreadable)
        return tvb:len()
    end

    local payload = bytes:sub(packet.headerLength + 1)
    packet.isCut = tvb:reported_len() > tvb:len()
    packet.range = function(index, length)
        return tvb(packet.headerLength + index, length or #payload - index)
    end
    if packet.lost > 0 then
        root:add_proto_expert_info(experts.lost, decimal(packet.lost) .. " lost before this packet")
    end
    if not pinfo.visited then
        pairUp(packet, payload, pinfo.number)
    end
    addPair(packet, root, pinfo)
    if #payload > 0 and addPayload[packet.kind] then
        addPayload[packet.kind](packet, root, payload)
    end
    local row = rowOf(packet, payload)
    root:append_text(", " .. row)
    pinfo.cols.info = row
    return tvb:len()
end

packetTypes:add(wtap.USER0, padscope)
