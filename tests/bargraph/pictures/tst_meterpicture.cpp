#include <QPainter>

#include "bargraph/bargraphtest.h"
#include "bargraph/pictures/picture.h"
#include "support/tests.h"

namespace {

// left 10, bottom 459: bar from 30 to 55, up from 449; 511 is 459 - 20 - 19 = 420 high; texts at 67
const QRect frame(10, 20, 400, 440);
const QSize size(480, 500);
const QRect besideTheBar(60, 20, 350, 440);

const QColor white(255, 255, 255);
const QColor brightEnd(10, 240, 10);

} // namespace

class TestMeterPicture : public BarGraphTest
{
    Q_OBJECT

private slots:
    void bar_data();
    void bar();
    void colours();
    void baseLine();
    void texts_data();
    void texts();
    void nothingOfTheChannels();
    void sizes_data();
    void sizes();
    void twoPixelsToOne();

private:
    QImage paint(int ratio = 1) const { return pictureOf(view, frame, size, ratio); }
};

void TestMeterPicture::bar_data()
{
    addColumns<int, QRect>("raw", "expected");

    // The bright end of the bar, between its black outline and the base line.
    addRow("0", 0, QRect());
    addRow("1", 1, QRect());                       // 0.8
    addRow("2", 2, QRect());                       // 1.6: one pixel, which the outline covers
    addRow("3", 3, corners(55, 448, 55, 448));     // 2.5
    addRow("255", 255, corners(55, 241, 55, 448)); // 209.6: from 449 - 209, below the outline
    addRow("510", 510, corners(55, 31, 55, 448));  // 419.2
    addRow("511", 511, corners(55, 30, 55, 448));  // 420
    addRow("512", 512, corners(55, 30, 55, 448));  // 420.8
    addRow("513 is higher than the margin", 513, corners(55, 29, 55, 448));
    addRow("1023 leaves the widget", 1023, corners(55, 0, 55, 448));
}

void TestMeterPicture::bar()
{
    QFETCH(int, raw);
    view->voltageRaw = raw;
    const QImage image = paint();
    QTEST(extentOf(image, brightEnd, QRect(55, 0, 1, 500)), "expected");
    // Nothing of it above, below or beside.
    QCOMPARE(extentOf(image, brightEnd, QRect(57, 0, 400, 500)), QRect());
    QCOMPARE(extentOf(image, brightEnd, QRect(0, 450, 480, 50)), QRect());
    QCOMPARE(extentOf(image, brightEnd, QRect(0, 0, 31, 500)), QRect());
}

void TestMeterPicture::colours()
{
    view->voltageRaw = 511;
    const QImage image = paint();
    // The middle of the first pixel is 1.5 / 25 along the way.
    QVERIFY(isAbout(image.pixelColor(31, 100), QColor(10, 52, 10)));
    QVERIFY(isAbout(image.pixelColor(42, 100), QColor(10, 140, 10))); // 12.5 / 25
    QCOMPARE(image.pixelColor(55, 100), brightEnd);
    for (int x : {30, 56})
        QCOMPARE(image.pixelColor(x, 100), QColor(0, 0, 0));
    QCOMPARE(image.pixelColor(42, 29), QColor(0, 0, 0));
}

void TestMeterPicture::baseLine()
{
    for (int raw : {0, 511, 1023}) {
        view->voltageRaw = raw;
        const QImage image = paint();
        QCOMPARE(extentOf(image, white, QRect(11, 0, 48, 500)), corners(30, 449, 55, 449));
        for (int x = 30; x <= 55; ++x)
            QCOMPARE(image.pixelColor(x, 449), white);
    }
}

void TestMeterPicture::texts_data()
{
    addColumns<int, int, int, QStringList>("raw", "min", "max", "lines");

    addRow("0", 0, 0, 0, QStringList{"Raw: 0", "Volts: 0", "Min: 0 Max: 0 Delta: 0"});
    // 510 * 4.88 = 2488.8
    addRow("510", 510, 300, 700, QStringList{"Raw: 510", "Volts: 2.489", "Min: 300 Max: 700 Delta: 400"});
    addRow("511", 511, 511, 511, QStringList{"Raw: 511", "Volts: 2.494", "Min: 511 Max: 511 Delta: 0"});
    addRow("1023", 1023, 0, 1023, QStringList{"Raw: 1023", "Volts: 4.992", "Min: 0 Max: 1023 Delta: 1023"});
    addRow("one step", 1, 1, 2, QStringList{"Raw: 1", "Volts: 0.00488", "Min: 1 Max: 2 Delta: 1"});
    addRow("right after a reset", 205, -1, -1,
           QStringList{"Raw: 205", "Volts: 1", "Min: -1 Max: -1 Delta: 0"});
}

void TestMeterPicture::texts()
{
    QFETCH(QStringList, lines);
    QFETCH(int, raw);
    QFETCH(int, min);
    QFETCH(int, max);
    view->voltageRaw = raw;
    view->voltageMin = min;
    view->voltageMax = max;
    const QImage image = paint();

    QImage expected = blackPicture(size);
    QPainter painter(&expected);
    painter.setPen(white);
    painter.setFont(testFont());
    painter.drawText(67, 240, lines[0]);
    painter.drawText(67, 265, lines[1]);
    painter.drawText(67, 290, lines[2]);
    painter.end();
    QCOMPARE(image.copy(besideTheBar), expected.copy(besideTheBar));
    QVERIFY(extentOf(image, white, QRect(60, 225, 350, 20)).isValid());
}

void TestMeterPicture::nothingOfTheChannels()
{
    setSignals(view, QVector<int>(12, 2000));
    view->voltageRaw = 100;
    const QImage image = paint();
    QCOMPARE(extentOf(image, QColor(0, 220, 0), image.rect()), QRect());
    QCOMPARE(extentOf(image, QColor(110, 230, 200), image.rect()), QRect());
    // The mode of the bars is nothing to the meter.
    view->classicMode = !view->classicMode;
    QCOMPARE(paint(), image);
}

void TestMeterPicture::sizes_data()
{
    addColumns<QSize, int, int, int>("area", "top", "base", "middle");

    // base = height - 11; top = base - (height - 20) * 510 / 511, and one more for the outline
    addRow("300x200", QSize(300, 200), 11, 189, 100);     // 179.6
    addRow("800x500", QSize(800, 500), 11, 489, 250);     // 479.1
    addRow("801x501", QSize(801, 501), 11, 490, 250);     // 480.1
    addRow("1600x1000", QSize(1600, 1000), 12, 989, 500); // 978.1
}

void TestMeterPicture::sizes()
{
    QFETCH(QSize, area);
    QFETCH(int, top);
    QFETCH(int, base);
    QFETCH(int, middle);
    view->voltageRaw = 510;
    const QImage image = pictureOf(view, QRect(QPoint(0, 0), area), area);
    QCOMPARE(extentOf(image, brightEnd, image.rect()), corners(45, top, 45, base - 1));
    QCOMPARE(extentOf(image, white, QRect(0, 0, 48, area.height())), corners(20, base, 45, base));

    QImage expected = blackPicture(area);
    QPainter painter(&expected);
    painter.setPen(white);
    painter.setFont(testFont());
    painter.drawText(57, middle, QStringLiteral("Raw: 510"));
    painter.end();
    const QRect line(50, middle - 12, 240, 16);
    QCOMPARE(image.copy(line), expected.copy(line));
}

void TestMeterPicture::twoPixelsToOne()
{
    view->voltageRaw = 511;
    const QImage image = paint(2);
    QCOMPARE(extentOf(image, white, QRect(22, 0, 94, 1000)).height(), 2);
    QCOMPARE(image.pixelColor(80, 898), white);
    QCOMPARE(image.pixelColor(110, 200), brightEnd);
    QVERIFY(isAbout(image.pixelColor(62, 200), QColor(10, 50, 10))); // 1.25 / 25
    QVERIFY(extentOf(image, white, QRect(130, 440, 600, 40)).isValid());
}

PADSCOPE_TESTS(TestMeterPicture);
#include "tst_meterpicture.moc"
