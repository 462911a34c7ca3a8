#pragma once

#include <QPoint>
#include <QRect>

/// Radius of a vector dial in pixels, and a term of the bar groups' vertical space.
inline constexpr int RADIUS = 40;

/// Where the parts of the picture lie, in pixels and in the coordinates of the painting area.
namespace geometry {

/// One channel's group of three bars around a centre line.
struct BarGroup
{
    int left;
    int centre; ///< y of the centre line
    int height; ///< length of a bar of the value 7000
};

/// \param channel 0 to 3
BarGroup barGroup(const QRect &area, int channel);

/// Signed length of a bar, truncated toward zero; negative when the bar rises.
int barLength(int value, int height);

/// Rectangle of a bar. That of a rising bar has a negative height, which is left to the painter.
/// \param index 0 to 2
QRect bar(const BarGroup &group, int index, int length);

/// One channel's vector dial.
struct Dial
{
    int left;
    int base; ///< y from which the texts keep their distance
    QPoint centre;

    QRect ellipse() const;
    QPoint magnitudeText() const; ///< left end of the text's base line
    QPoint angleText() const;     ///< left end of the text's base line
};

/// \param channel 0 to 3
Dial dial(const QRect &area, int channel);

/// Sum of three components at 0, 60 and 120 degrees.
QPoint vectorOf(int c0, int c60, int c120);

/// Length of a vector, 0 to 65535.
int magnitude(const QPoint &vector);

/// End of the needle as seen from the dial's centre: about RADIUS away, or null for a magnitude below 10.
QPoint needle(const QPoint &vector, int magnitude);

/// The voltage meter: a bar, and the left ends of the base lines of three texts beside it.
struct Meter
{
    QRect bar;
    QPoint rawText;
    QPoint voltsText;
    QPoint extremesText;
};

/// \param raw 0 to 1023; the bar overshoots the area from 512 on
Meter meter(const QRect &area, int raw);

} // namespace geometry
