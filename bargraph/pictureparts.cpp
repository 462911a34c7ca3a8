#include "bargraph.h"
#include "integermath.h"
#include "layouts.h"

namespace {

constexpr int meterPart = 4;

} // namespace

QString bargraph::partName(int part)
{
    switch (part) {
    case 0:
        return tr("X fine");
    case 1:
        return tr("Y fine");
    case 2:
        return tr("X coarse");
    case 3:
        return tr("Y coarse");
    default:
        return tr("Voltage");
    }
}

QString bargraph::partText(int part) const
{
    const bool isMeterShown = voltageRaw >= 0;
    if (isMeterShown != (part == meterPart))
        return {};
    if (isMeterShown)
        return meterTexts(voltageRaw).join(QLatin1String(", "));
    const qint16 *c = &channelSignals[3 * part];
    const QPoint vector = geometry::vectorOf(c[0], c[1], c[2]);
    //: The components of a signal at these three angles, and its vector as it is painted.
    return tr("0, 60 and 120 degrees: %1, %2, %3. Magnitude: %4. Angle: %5 of 8192.")
        .arg(c[0])
        .arg(c[1])
        .arg(c[2])
        .arg(geometry::magnitude(vector))
        .arg(ArcTan(vector.x(), vector.y()));
}

QRect bargraph::partRect(int part) const
{
    const QRect area = paintingArea();
    if (part == meterPart)
        return area;
    // Bars and dials have columns of their own, a few pixels apart.
    const QRect bars(geometry::barGroup(area, part).left, area.top(), 2 * RADIUS, area.height());
    const QRect dial(geometry::dial(area, part).left, area.top(), 2 * RADIUS, area.height());
    return bars | dial;
}

QStringList bargraph::meterTexts(int raw) const
{
    return {tr("Raw: %1").arg(raw), tr("Volts: %1").arg(reports::adcVolts.of(raw), 0, 'g', 4),
            tr("Min: %1 Max: %2 Delta: %3").arg(voltageMin).arg(voltageMax).arg(voltageMax - voltageMin)};
}
