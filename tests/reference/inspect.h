#pragma once

#include "bargraph.h"
#include "framepacer.h"
#include "monitor.h"
#include "rowdelegate.h"

/// What the tabs hold and show nowhere, and what a plain tree view takes the place of.
struct Inspect
{
    static const _DataPacket *previousPacket(const monitor &view) { return view.previousPacket; }
    static QTimer &pendingTextTimer(monitor &view) { return view.pendingTextTimer; }
    static QFont font(const monitor &view) { return view.monitorFont; }
    static QTreeView *&rows(monitor &view) { return view.treeView; }
    static QLabel *&label(monitor &view) { return view.lastRowLabel; }

    static FramePacer *&pacer(monitor &view) { return view.pacer; }
    static bool isHeldBack(const FramePacer &pacer) { return pacer.frameEnd.isActive(); }
    static void rest(FramePacer &pacer) { pacer.sinceFrame.invalidate(); }

    static QHash<QString, QStaticText> &layouts(const RowDelegate &delegate) { return delegate.layouts; }
    static const QHash<QString, QSize> &hints(const RowDelegate &delegate) { return delegate.hints; }
};
