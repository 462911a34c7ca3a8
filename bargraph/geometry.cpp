#include "geometry.h"

#include "integermath.h"

namespace geometry {

namespace {

constexpr int leftMargin = 20;
constexpr int barWidth = 25;
constexpr int fullScale = 7000;
constexpr int groupPitch = 95;
constexpr int dialPitch = 2 * RADIUS + 10; // differs from that of the bar groups, on purpose
constexpr int minMagnitude = 10;
constexpr int halfMeterScale = 511;

} // namespace

BarGroup barGroup(const QRect &area, int channel)
{
    // The dials below share the area's height.
    const int height = area.bottom() - area.top() - 2 * RADIUS - 9;
    return {area.left() + groupPitch * channel + leftMargin, area.top() + 5 + height / 2, height};
}

int barLength(int value, int height)
{
    return static_cast<int>(-(qint64{value} * height / fullScale));
}

QRect bar(const BarGroup &group, int index, int length)
{
    const int left = group.left + barWidth * index;
    return {QPoint(left, group.centre), QPoint(left + barWidth - 1, group.centre + length - 1)};
}

QRect Dial::ellipse() const
{
    return {QPoint(left, centre.y() - RADIUS), QPoint(left + 2 * RADIUS - 1, centre.y() + RADIUS - 1)};
}

QPoint Dial::magnitudeText() const
{
    return {left + 12, base - 23};
}

QPoint Dial::angleText() const
{
    return {left + 12, base + 20};
}

Dial dial(const QRect &area, int channel)
{
    const int left = area.left() + channel * dialPitch + leftMargin;
    const int base = area.bottom() + 1 - RADIUS;
    return {left, base, QPoint(left + RADIUS, base - 5)};
}

QPoint vectorOf(int c0, int c60, int c120)
{
    // 512 / 591 approximates sqrt(3) / 2.
    const qint64 y = (qint64{c60} + c120) * 512 / 591;
    return {c0 + c60 / 2 - c120 / 2, static_cast<int>(y)};
}

int magnitude(const QPoint &vector)
{
    const qint64 x = vector.x();
    const qint64 y = vector.y();
    return sqrt32(static_cast<long>(x * x + y * y));
}

QPoint needle(const QPoint &vector, int magnitude)
{
    if (magnitude < minMagnitude)
        return {0, 0};
    return {static_cast<int>(qint64{vector.x()} * RADIUS / magnitude),
            static_cast<int>(-(qint64{vector.y()} * RADIUS / magnitude))};
}

Meter meter(const QRect &area, int raw)
{
    const int height = static_cast<int>(qint64{area.bottom() - area.top() - 19} * raw / halfMeterScale);
    const QPoint foot(area.left() + 20, area.bottom() - 10);
    const int textLeft = area.left() + 57;
    const int middle = area.top() + (area.bottom() - area.top() + 1) / 2;
    return {QRect(foot - QPoint(0, height), foot + QPoint(25, 0)), QPoint(textLeft, middle),
            QPoint(textLeft, middle + 25), QPoint(textLeft, middle + 50)};
}

} // namespace geometry
