#pragma once

#include <QFont>
#include <QLabel>
#include <QSpinBox>
#include <QStringList>

#include "bargraph.h"

/// What the tests reach of the bar graph's private members.
struct Inspect
{
    /// All that a report can change and that is not as in a new view: "raw 16; frequency 900; box 900".
    static QString stateOf(const bargraph &view)
    {
        QStringList changes;
        const auto add = [&changes](const char *name, const QString &initial, const QString &value) {
            if (value != initial)
                changes += QLatin1String(name) + ' ' + value;
        };
        add("signals", "0 0 0 0 0 0 0 0 0 0 0 0", joined(view.channelSignals));
        add("prox", "%00", QByteArray(1, view.proxChar).toPercentEncoding());
        add("raw", "0", joined({view.frequencyRaw}));
        add("frequency", "0", QString::number(view.frequency));
        add("shown", "Prox:", view.proxLabel->text().toUtf8().toPercentEncoding(" :"));
        add("known", "0", joined({view.spinFrequency}));
        add("box", "0", joined({view.freqSpin->value()}));
        add("frequency label", "Freq:", view.freqLabel->text());
        add("words", "-1 -1", joined({view.reportWord8, view.reportWord10}));
        add("volts", "-1 -1 -1", joined({view.voltageRaw, view.voltageMin, view.voltageMax}));
        add("text", "", view.textLine.toUtf8().toPercentEncoding(" *"));
        return changes.join("; ");
    }

    static bool isClassic(const bargraph &view) { return view.classicMode; }

    /// Draws the first channel's dial for a vector to the right.
    static void drawDial(bargraph &view, QPainter &painter, const QRect &area, int angle)
    {
        view.DoVectorFine(&painter, area, 0, 1000, 0, 0, angle, 1, 'x');
    }

private:
    template <typename Values>
    static QString joined(const Values &values)
    {
        QStringList texts;
        for (int value : values)
            texts += QString::number(value);
        return texts.join(' ');
    }
    static QString joined(std::initializer_list<int> values) { return joined<>(values); }
};
