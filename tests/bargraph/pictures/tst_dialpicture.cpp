#include <QPainter>

#include "bargraph/bargraphtest.h"
#include "bargraph/pictures/picture.h"
#include "support/tests.h"

namespace {

// bottom 459: base 459 + 1 - 40 = 420, centres 5 above it and 90 apart from 10 + 20 + 40
const QRect frame(10, 20, 400, 440);
const QSize size(480, 500);

const QColor white(255, 255, 255);
const QColor green(0, 220, 0);

} // namespace

class TestDialPicture : public BarGraphTest
{
    Q_OBJECT

private slots:
    void ellipses();
    void glow();
    void needle_data();
    void needle();
    void needleOfEveryChannel();
    void texts_data();
    void texts();
    void givenAngle();
    void sizes_data();
    void sizes();
    void twoPixelsToOne();

private:
    QImage paint(int ratio = 1) const { return pictureOf(view, frame, size, ratio); }
};

void TestDialPicture::ellipses()
{
    const QImage image = paint();
    const int lefts[] = {30, 120, 210, 300};
    for (int left : lefts) {
        // The outline of an 80 pixel wide circle takes one pixel more.
        QCOMPARE(extentOf(image, white, QRect(left - 5, 300, 90, 200)), corners(left, 375, left + 80, 455));
        QCOMPARE(colourAt(image, left + 40, 375), QStringLiteral("#ffffff"));
        QCOMPARE(colourAt(image, left + 40, 455), QStringLiteral("#ffffff"));
        QCOMPARE(colourAt(image, left, 415), QStringLiteral("#ffffff"));
        QCOMPARE(colourAt(image, left + 80, 415), QStringLiteral("#ffffff"));
        QCOMPARE(colourAt(image, left + 1, 376), QStringLiteral("#000000"));
    }
}

void TestDialPicture::glow()
{
    const QImage image = paint();
    // From green in the middle to black a fifth of the radius away, which is 8 pixels.
    const auto greenAt = [&image](int x, int y) { return image.pixelColor(x, y).green(); };
    QVERIFY(qAbs(greenAt(73, 415) - 123) <= 6); // 3.54 away: 220 * (1 - 3.54 / 8)
    QVERIFY(qAbs(greenAt(66, 415) - 123) <= 6);
    QVERIFY(qAbs(greenAt(70, 420) - 68) <= 6); // 5.52 away
    QVERIFY(qAbs(greenAt(70, 409) - 68) <= 6);
    QVERIFY(greenAt(76, 415) > 0);
    for (const QPoint &point : {QPoint(78, 415), QPoint(61, 415), QPoint(70, 423), QPoint(70, 406)})
        QCOMPARE(image.pixelColor(point), QColor(0, 0, 0));
    QCOMPARE(image.pixelColor(73, 415).red(), 0);
    QCOMPARE(image.pixelColor(73, 415).blue(), 0);
}

void TestDialPicture::needle_data()
{
    addColumns<QVector<int>, QRect>("components", "expected");

    // Two pixels wide, with a square end that is a pixel longer.
    addRow("none", QVector<int>{0, 0, 0}, corners(69, 414, 70, 415));
    addRow("magnitude 9 is none", QVector<int>{9, 0, 0}, corners(69, 414, 70, 415));
    addRow("magnitude 10 is a full one", QVector<int>{10, 0, 0}, corners(69, 414, 110, 415));
    addRow("right", QVector<int>{1000, 0, 0}, corners(69, 414, 110, 415));
    addRow("left", QVector<int>{-1000, 0, 0}, corners(29, 414, 70, 415));
    addRow("up", QVector<int>{0, 1000, 1000}, corners(69, 374, 70, 415));
    addRow("down", QVector<int>{0, -1000, -1000}, corners(69, 414, 70, 455));
}

void TestDialPicture::needle()
{
    QFETCH(QVector<int>, components);
    setSignals(view, components);
    QImage image = paint();
    // Without texts, which are of the same green.
    view->viewFont.setPixelSize(1);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    view->DoVectorFine(&painter, frame, 0, components[0], components[1], components[2], -1, 0, 0);
    painter.end();
    QTEST(extentOf(image, green, image.rect()), "expected");
}

void TestDialPicture::needleOfEveryChannel()
{
    setSignals(view, {1000, 0, 0, -1000, 0, 0, 0, 1000, 1000, 0, -1000, -1000});
    const QImage image = paint();
    QCOMPARE(image.pixelColor(100, 415), green);
    QCOMPARE(image.pixelColor(130, 415), green);
    QCOMPARE(image.pixelColor(250, 380), green);
    QCOMPARE(image.pixelColor(340, 450), green);
    // and not the other way round
    QCOMPARE(image.pixelColor(40, 415), QColor(0, 0, 0));
    QCOMPARE(image.pixelColor(190, 415), QColor(0, 0, 0));
    QCOMPARE(image.pixelColor(250, 450), QColor(0, 0, 0));
    QCOMPARE(image.pixelColor(340, 380), QColor(0, 0, 0));
}

void TestDialPicture::texts_data()
{
    addColumns<QVector<int>, QString, QString>("components", "magnitude", "angle");

    addRow("nothing", QVector<int>{0, 0, 0}, QStringLiteral("    0"), QStringLiteral("    0"));
    addRow("right", QVector<int>{1000, 0, 0}, QStringLiteral(" 1000"), QStringLiteral("    0"));
    addRow("left", QVector<int>{-32768, 0, 0}, QStringLiteral("32768"), QStringLiteral(" 4096"));
    addRow("just below the right", QVector<int>{10000, -2, 0}, QStringLiteral(" 9999"),
           QStringLiteral(" 8192")); // x 9999, y -1
}

void TestDialPicture::texts()
{
    QFETCH(QVector<int>, components);
    QFETCH(QString, magnitude);
    QFETCH(QString, angle);
    setSignals(view, components);
    const QImage image = paint();

    QImage expected = blackPicture(size);
    QPainter painter(&expected);
    painter.setPen(green);
    painter.setFont(testFont());
    painter.drawText(42, 397, magnitude);
    painter.drawText(42, 440, angle);
    painter.end();

    // Within the circle, above and below its middle.
    for (const QRect &part : {QRect(46, 388, 48, 12), QRect(44, 429, 52, 14)}) {
        QVERIFY(expected.copy(part) != blackPicture(part.size()));
        QCOMPARE(image.copy(part), expected.copy(part));
    }
}

/// An angle that is given is shown, and leaves the needle where it is.
void TestDialPicture::givenAngle()
{
    const auto dial = [this](int angle) {
        view->viewFont = testFont();
        QImage image = emptyPicture(size);
        QPainter painter(&image);
        view->DoVectorFine(&painter, frame, 0, 1000, 0, 0, angle, 1, 'x');
        return image;
    };
    const QRect angleText(44, 429, 52, 14);
    const QRect above(0, 0, 480, 428);
    QCOMPARE(dial(0).copy(angleText), dial(-1).copy(angleText));
    QVERIFY(dial(1234).copy(angleText) != dial(-1).copy(angleText));
    QCOMPARE(dial(1234).copy(above), dial(-1).copy(above));
}

void TestDialPicture::sizes_data()
{
    addColumns<QSize, QRect, QRect>("area", "first", "third");

    // from height - 40 - 45 to 80 further down
    addRow("300x200", QSize(300, 200), corners(20, 115, 100, 195), corners(200, 115, 280, 195));
    addRow("800x500", QSize(800, 500), corners(20, 415, 100, 495), corners(200, 415, 280, 495));
    addRow("801x501", QSize(801, 501), corners(20, 416, 100, 496), corners(200, 416, 280, 496));
    addRow("1600x1000", QSize(1600, 1000), corners(20, 915, 100, 995), corners(200, 915, 280, 995));
}

void TestDialPicture::sizes()
{
    QFETCH(QSize, area);
    QFETCH(QRect, first);
    const QImage image = pictureOf(view, QRect(QPoint(0, 0), area), area);
    const QRect row(15, first.top() - 5, 90, 90);
    QTEST(extentOf(image, white, row), "first");
    QTEST(extentOf(image, white, row.translated(180, 0)), "third");
}

void TestDialPicture::twoPixelsToOne()
{
    setSignals(view, {1000, 0, 0});
    const QImage image = paint(2);
    const QRect outline = extentOf(image, white, QRect(50, 700, 180, 250));
    QVERIFY(outline.contains(corners(60, 750, 218, 908)));
    QVERIFY(corners(58, 748, 221, 911).contains(outline));
    // The needle is four pixels wide: 828 to 831.
    const QRect needle = extentOf(image, green, QRect(180, 810, 100, 40));
    QCOMPARE(needle.top(), 828);
    QCOMPARE(needle.bottom(), 831);
    QCOMPARE(needle.right(), 221);
}

PADSCOPE_TESTS(TestDialPicture);
#include "tst_dialpicture.moc"
