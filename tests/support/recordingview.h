#pragma once

#include <functional>

#include <QVector>

#include "datapacket.h"
#include "qorvexgraph.h"
#include "qorvexwidget.h"

/// A view that keeps a copy of every packet it is shown.
class RecordingView : public qorvexwidget
{
public:
    explicit RecordingView(qorvexgraph *window)
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

    QVector<_DataPacket> packets;
    std::function<void()> onDisplay; ///< called for each packet, when it is recorded
};
