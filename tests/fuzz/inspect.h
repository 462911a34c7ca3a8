#pragma once

#include <array>
#include <QLabel>
#include <QStandardItemModel>
#include <utility>

#include "bargraph.h"
#include "datapacket.h"
#include "monitor.h"

/// What the fuzz targets reach of the views' private members.
struct Inspect
{
    /// The last reading, the lowest and the highest.
    static std::array<int, 3> voltages(const bargraph &view)
    {
        return {view.voltageRaw, view.voltageMin, view.voltageMax};
    }
    static qint64 frequency(const bargraph &view) { return view.frequency; }
    static qint16 frequencyRaw(const bargraph &view) { return view.frequencyRaw; }
    static QString textLine(const bargraph &view) { return view.textLine; }

    static const QStandardItemModel &rows(const monitor &view) { return *view.model; }
    static QString label(const monitor &view) { return view.lastRowLabel->text(); }
    static QString pendingText(const monitor &view) { return view.pendingText; }
    static bool willShowPendingText(const monitor &view) { return view.pendingTextTimer.isActive(); }
    static quint32 previousChecksum(const monitor &view) { return view.previousPacket->checksum; }

    /// As after its construction, but for the font; a new view for each input would take most of the time.
    static void reset(monitor &view)
    {
        view.model->removeRows(0, view.model->rowCount());
        view.lastRowLabel->clear();
        view.pendingTextTimer.stop();
        view.pendingText = QString();
        delete std::exchange(view.previousPacket, nullptr);
    }
};
