#pragma once

#include <QAbstractItemModel>
#include <QTreeView>

#include "bargraph.h"
#include "monitor.h"
#include "qorvexgraph.h"
#include "support/packets.h"

/// The tool's window, detached, and its tabs.
struct ToolWindow
{
    /// Shows a report on the "Monitor" tab.
    void send(const QByteArray &bytes, QTime time = noon) const
    {
        _DataPacket packet = packetOf(bytes, time);
        monitorTab->Display(&packet);
    }

    QStringList rows() const
    {
        const QAbstractItemModel &model = *monitorTab->findChild<QTreeView *>()->model();
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts += model.index(row, 0).data(Qt::EditRole).toString();
        return texts;
    }

    qorvexgraph window;
    monitor *const monitorTab = window.findChild<monitor *>();
    bargraph *const barsTab = window.findChild<bargraph *>();
};
