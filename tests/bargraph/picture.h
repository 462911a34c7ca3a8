#pragma once

#include <QtEndian>

#include "bargraph/barview.h"

/// A full signal report with these components; the others are zero.
inline QByteArray signalReport(const QStringList &components)
{
    QByteArray report = hex("28 2f 01").leftJustified(40, '\0');
    for (int i = 0; i < components.size(); ++i)
        qToLittleEndian(components[i].toShort(), report.data() + 13 + 2 * i);
    return report;
}

inline QByteArray voltageReport(int raw)
{
    return hex("34 77 0c") + static_cast<char>(raw % 256) + static_cast<char>(raw / 256);
}

/// A view of 480x500 pixels in a state:
///   classic 1000 -1000   the bars' mode, and components from the first on
///   gradient
///   meter 600 7 reset    readings of the voltage, and the reset of its extremes
class PictureView : public BarView
{
public:
    explicit PictureView(const QString &state)
    {
        QStringList words = state.split(' ');
        const QString mode = words.takeFirst();
        view.OnClickedClassicMode(mode == "classic" ? Qt::Checked : Qt::Unchecked);
        if (mode == "meter")
            takeReadings(words);
        else
            display(signalReport(words));
        view.layout()->setEnabled(false);
        view.resize(480, 500);
        frame()->setGeometry(10, 20, 400, 440);
    }

    /// Draws the picture without the controls.
    void render(QPaintDevice *device) { view.render(device, {}, {}, QWidget::RenderFlags()); }

private:
    void takeReadings(const QStringList &words)
    {
        for (const QString &word : words) {
            if (word == "reset")
                view.resetMinMaxVoltage();
            else
                display(voltageReport(word.toInt()));
        }
    }
};
