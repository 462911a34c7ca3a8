#include <QFrame>
#include <QPainter>

#include "bargraph.h"
#include "integermath.h"

namespace {

constexpr int channelCount = 4;
constexpr int computeAngle = -1;

constexpr QColor black(0, 0, 0);
constexpr QColor white(255, 255, 255);
constexpr QColor green(0, 220, 0);

QPen solidPen(const QColor &colour, qreal width)
{
    return {QBrush(colour), width};
}

QLinearGradient acrossBar(const QRect &bar, const QColor &left, const QColor &right)
{
    QLinearGradient gradient(bar.left(), bar.top(), bar.right(), bar.top());
    gradient.setColorAt(0, left);
    gradient.setColorAt(1, right);
    return gradient;
}

/// By length, not by value: a value too small for a pixel gets the colours of a falling bar.
void setBarColours(QPainter *painter, const QRect &bar, int length, bool classic)
{
    const bool rises = length < 0;
    if (classic) {
        painter->setPen(solidPen(rises ? QColor(110, 230, 200) : QColor(240, 240, 100), 1.0));
        return;
    }
    painter->setBrush(rises ? acrossBar(bar, QColor(1, 1, 90), QColor(0, 0, 250))
                            : acrossBar(bar, QColor(190, 24, 8), QColor(250, 190, 40)));
    painter->setPen(solidPen(black, 0));
}

QRadialGradient dialGlow(const QPoint &centre)
{
    QRadialGradient gradient(centre, RADIUS);
    gradient.setColorAt(0.0, green);
    gradient.setColorAt(0.2, black);
    return gradient;
}

} // namespace

QRect bargraph::paintingArea() const
{
    const QRect frame = drawFrame->frameRect();
    return {drawFrame->mapToParent(frame.topLeft()), drawFrame->mapToParent(frame.bottomRight())};
}

void bargraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect area = paintingArea();
    painter.fillRect(area, black);
    if (voltageRaw >= 0) {
        DoVoltageMeter(&painter, area, voltageRaw);
        return;
    }
    for (int channel = 0; channel < channelCount; ++channel) {
        const qint16 *c = &channelSignals[3 * channel];
        DoHistogram(&painter, area, channel, c[0], c[1], c[2]);
        DoVectorFine(&painter, area, channel, c[0], c[1], c[2], computeAngle, static_cast<char>(channel % 2),
                     unusedChar);
    }
}

void bargraph::DoHistogram(QPainter *painter, const QRect &area, int channel, int c0, int c60, int c120)
{
    const geometry::BarGroup group = geometry::barGroup(area, channel);
    painter->setBrush(QBrush(black));
    int index = 0;
    for (int value : {c0, c60, c120}) {
        const int length = geometry::barLength(value, group.height);
        const QRect bar = geometry::bar(group, index++, length);
        setBarColours(painter, bar, length, classicMode);
        painter->drawRect(bar);
    }
    painter->setPen(solidPen(white, 1.0));
    painter->drawLine(group.left, group.centre, group.left + 75, group.centre);
}

void bargraph::DoVectorFine(QPainter *painter, const QRect &area, int channel, int c0, int c60, int c120,
                            int angle, char, char)
{
    const geometry::Dial dial = geometry::dial(area, channel);
    const QPoint vector = geometry::vectorOf(c0, c60, c120);
    if (angle == computeAngle)
        angle = ArcTan(vector.x(), vector.y());
    const int magnitude = geometry::magnitude(vector);
    painter->setBrush(dialGlow(dial.centre));
    painter->setPen(solidPen(white, 1.0));
    painter->drawEllipse(dial.ellipse());
    painter->setPen(solidPen(green, 2.0));
    painter->drawLine(dial.centre, dial.centre + geometry::needle(vector, magnitude));
    // The texts are drawn with the needle's pen.
    painter->setFont(viewFont);
    painter->drawText(dial.magnitudeText(), QString::fromLatin1("%1").arg(magnitude, 5));
    painter->drawText(dial.angleText(), QString::fromLatin1("%1").arg(angle, 5));
}

void bargraph::DoVoltageMeter(QPainter *painter, const QRect &area, int raw)
{
    const geometry::Meter meter = geometry::meter(area, raw);
    painter->setBrush(acrossBar(meter.bar, QColor(10, 40, 10), QColor(10, 240, 10)));
    painter->setPen(solidPen(black, 1.0));
    painter->drawRect(meter.bar);
    painter->setPen(solidPen(white, 1.0));
    painter->drawLine(meter.bar.bottomLeft(), meter.bar.bottomRight());
    painter->setFont(viewFont);
    const QStringList texts = meterTexts(raw);
    painter->drawText(meter.rawText, texts[0]);
    painter->drawText(meter.voltsText, texts[1]);
    painter->drawText(meter.extremesText, texts[2]);
}
