#pragma once

#include <functional>
#include <QVector>

#include "datapacket.h"
#include "qorvexwidget.h"

/// A view that keeps a copy of every packet it is shown, and the typed commands that it is offered.
class RecordingView : public qorvexwidget
{
public:
    explicit RecordingView(TabWindow *window)
        : qorvexwidget(window)
    {
        displayThreshold = 50;
    }

    void Display(_DataPacket *packet) override
    {
        packets.append(*packet);
        if (onDisplay)
            onDisplay();
    }
    void CommandTyped(const QString &command) override { commands += command; }

    QByteArrayList reports() const
    {
        QByteArrayList reports;
        for (const _DataPacket &packet : packets)
            reports += packet.data;
        return reports;
    }

    using qorvexwidget::displayThreshold;
    QVector<_DataPacket> packets;
    QStringList commands;
    std::function<void()> onDisplay; ///< called for each packet, when it is recorded
};
