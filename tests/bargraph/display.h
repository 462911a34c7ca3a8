#pragma once

#include <QLabel>
#include <QSpinBox>
#include <QStringList>
#include <QVector>

#include "bargraph.h"
#include "qorvexgraph.h"
#include "support/packets.h"

// What the tests of the bar graph share: packets that come at a time of day, and a look at all of its state.

/// Hands a report to the view as a packet that came at a time of day.
inline void display(bargraph *view, const QByteArray &report, QTime time = noon)
{
    _DataPacket packet = packetOf(report, time);
    view->Display(&packet);
}

/// A full signal report with the signals 1 to 12, the frequency word 16, and words that are only kept.
inline QByteArray fullReport()
{
    return hex("28 2f 01 f3f4f5f6f7 3412 7896 fc"
               "0100 0200 0300 0400 0500 0600 0700 0800 0900 0a00 0b00 0c00 1000 ff");
}

inline QVector<int> signalsOf(const bargraph *view)
{
    QVector<int> values;
    for (qint16 value : view->channelSignals)
        values += value;
    return values;
}

/// All that a report can change, as text.
inline QString stateOf(const bargraph *view)
{
    QStringList parts;
    for (int value : signalsOf(view))
        parts += QString::number(value);
    parts += QString::number(view->proxChar);
    parts += QString::number(view->frequency);
    parts += QString::number(view->frequencyRaw);
    parts += QString::number(view->spinFrequency);
    parts += QString::number(view->freqSpin->value());
    parts += QString::number(view->reportWord8);
    parts += QString::number(view->reportWord10);
    parts += QString::number(view->voltageRaw);
    parts += QString::number(view->voltageMin);
    parts += QString::number(view->voltageMax);
    parts += view->textLine;
    parts += view->proxLabel->text();
    parts += view->freqLabel->text();
    return parts.join(QLatin1Char('|'));
}
