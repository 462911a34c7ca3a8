#pragma once

#include <QLabel>
#include <QStandardItemModel>
#include <QStringList>

#include "monitor.h"
#include "qorvexgraph.h"
#include "support/packets.h"

/// A detached main window and its "Monitor" tab, with what a board would send it.
class MonitorView
{
public:
    MonitorView() = default;
    /// The view keeps its previous packet for good, by design; a test does not.
    ~MonitorView() { delete view->previousPacket; }
    MonitorView(const MonitorView &) = delete;
    MonitorView &operator=(const MonitorView &) = delete;

    /// Shows one report, as the intake does.
    void send(const QByteArray &bytes, QTime time = noon)
    {
        _DataPacket packet = packetOf(bytes, time);
        view->Display(&packet);
    }

    QStringList rows() const
    {
        QStringList texts;
        for (int row = 0; row < view->model->rowCount(); ++row)
            texts.append(view->model->index(row, 0).data(Qt::EditRole).toString());
        return texts;
    }

    QString label() const { return view->lastRowLabel->text(); }

    qorvexgraph window;
    monitor *const view = window.monitorView;
};
