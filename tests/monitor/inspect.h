#pragma once

#include "framepacer.h"
#include "monitor.h"
#include "rowannouncer.h"

/// What the "Monitor" tab holds and shows nowhere.
struct Inspect
{
    static _DataPacket *previousPacket(const monitor &view) { return view.previousPacket; }
    static QString pendingText(const monitor &view) { return view.pendingText; }
    static QTimer &pendingTextTimer(monitor &view) { return view.pendingTextTimer; }
    static QFont font(const monitor &view) { return view.monitorFont; }
    static bool isLogging(const monitor &view) { return view.logEnabled; }

    static bool isAnnouncing(const monitor &view) { return view.announcer->secondEnd.isActive(); }

    static FramePacer &pacer(const monitor &view) { return *view.pacer; }
    static QElapsedTimer &sinceFrame(FramePacer &pacer) { return pacer.sinceFrame; }
    static bool isHeldBack(const FramePacer &pacer) { return pacer.frameEnd.isActive(); }
};
