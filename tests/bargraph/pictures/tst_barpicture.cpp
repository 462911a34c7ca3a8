#include "bargraph/bargraphtest.h"
#include "bargraph/pictures/picture.h"
#include "support/tests.h"

namespace {

// left 10, top 20, bottom 459: bars share 459 - 20 - 80 - 9 = 350 pixels, around 20 + 5 + 175 = 200
const QRect frame(10, 20, 400, 440);
const QSize size(480, 500);

const QColor rise(110, 230, 200);
const QColor fall(240, 240, 100);
const QColor white(255, 255, 255);

} // namespace

class TestBarPicture : public BarGraphTest
{
    Q_OBJECT

private slots:
    void background();
    void centreLines();
    void classicBars();
    void classicBarOfEveryChannel();
    void gradientBars();
    void lengths_data();
    void lengths();
    void nothingIsClipped();
    void modeAtTheNextPicture();
    void sizes_data();
    void sizes();
    void twoPixelsToOne();

private:
    QImage paint(int ratio = 1) const { return pictureOf(view, frame, size, ratio); }
};

void TestBarPicture::background()
{
    for (bool classic : {true, false}) {
        view->classicMode = classic;
        const QImage image = paint();
        QCOMPARE(extentOf(image, Qt::black, image.rect()), corners(10, 20, 409, 459));
        // Nothing but the area is painted.
        QCOMPARE(colourAt(image, 9, 20), QStringLiteral("#ff00ff"));
        QCOMPARE(colourAt(image, 10, 19), QStringLiteral("#ff00ff"));
        QCOMPARE(colourAt(image, 410, 459), QStringLiteral("#ff00ff"));
        QCOMPARE(colourAt(image, 409, 460), QStringLiteral("#ff00ff"));
    }
}

void TestBarPicture::centreLines()
{
    for (bool classic : {true, false}) {
        view->classicMode = classic;
        const QImage image = paint();
        // 95 apart, 76 long; empty bars leave nothing else above the dials
        const int lefts[] = {30, 125, 220, 315};
        for (int left : lefts) {
            const QRect group(left - 9, 20, 94, 340);
            QCOMPARE(extentOf(image, white, group), corners(left, 200, left + 75, 200));
            for (int x = left; x <= left + 75; ++x)
                QCOMPARE(colourAt(image, x, 200), QStringLiteral("#ffffff"));
        }
        QCOMPARE(extentOf(image, rise, image.rect()), QRect());
        QCOMPARE(extentOf(image, fall, image.rect()), QRect());
    }
}

void TestBarPicture::classicBars()
{
    setSignals(view, {1000, -1000, 0}); // 1000 * 350 / 7000 = 50
    const QImage image = paint();
    const QRect group(21, 20, 94, 340);
    // The line at 200 and, where they touch, the second bar lie over the first.
    QCOMPARE(extentOf(image, rise, group), corners(30, 150, 55, 199));
    QCOMPARE(extentOf(image, fall, group), corners(55, 201, 80, 250));
    QCOMPARE(extentOf(image, white, group), corners(30, 200, 105, 200));
    // Outlines, and nothing within them.
    for (int x = 30; x <= 55; ++x)
        QCOMPARE(colourAt(image, x, 150), QStringLiteral("#6ee6c8"));
    for (int y = 150; y <= 199; ++y) {
        QCOMPARE(colourAt(image, 30, y), QStringLiteral("#6ee6c8"));
        QCOMPARE(colourAt(image, 55, y), QStringLiteral("#6ee6c8"));
    }
    QCOMPARE(extentOf(image, Qt::black, corners(31, 151, 54, 199)), corners(31, 151, 54, 199));
    QCOMPARE(colourAt(image, 42, 175), QStringLiteral("#000000"));
    QCOMPARE(colourAt(image, 67, 225), QStringLiteral("#000000"));
    QCOMPARE(colourAt(image, 67, 250), QStringLiteral("#f0f064"));
    QCOMPARE(colourAt(image, 80, 225), QStringLiteral("#f0f064"));
}

void TestBarPicture::classicBarOfEveryChannel()
{
    // 60, 80, 100 and 120 pixels
    setSignals(view, {0, 0, 1200, 0, 0, 1600, 0, 0, 2000, 0, 0, 2400});
    const QImage image = paint();
    QCOMPARE(extentOf(image, rise, QRect(30, 0, 90, 350)), corners(80, 140, 105, 199));
    QCOMPARE(extentOf(image, rise, QRect(125, 0, 90, 350)), corners(175, 120, 200, 199));
    QCOMPARE(extentOf(image, rise, QRect(220, 0, 90, 350)), corners(270, 100, 295, 199));
    QCOMPARE(extentOf(image, rise, QRect(315, 0, 90, 350)), corners(365, 80, 390, 199));
}

void TestBarPicture::gradientBars()
{
    view->classicMode = false;
    setSignals(view, {1000, -1000, 0});
    const QImage image = paint();
    // A black outline, then the colours: the middle of the first pixel is 1.5 / 24 along the way.
    QVERIFY(isAbout(image.pixelColor(31, 175), QColor(1, 1, 100)));
    QVERIFY(isAbout(image.pixelColor(42, 175), QColor(0, 0, 173)));
    QCOMPARE(image.pixelColor(54, 175), QColor(0, 0, 250));
    QVERIFY(isAbout(image.pixelColor(56, 225), QColor(194, 34, 10)));
    QVERIFY(isAbout(image.pixelColor(67, 225), QColor(221, 110, 25)));
    QCOMPARE(image.pixelColor(79, 225), QColor(250, 190, 40));
    // From the outline at the far end to the centre line.
    QCOMPARE(extentOf(image, QColor(0, 0, 250), QRect(21, 20, 94, 340)).top(), 151);
    QCOMPARE(extentOf(image, QColor(0, 0, 250), QRect(21, 20, 94, 340)).bottom(), 199);
    QCOMPARE(extentOf(image, QColor(250, 190, 40), QRect(21, 20, 94, 340)).top(), 201);
    QCOMPARE(extentOf(image, QColor(250, 190, 40), QRect(21, 20, 94, 340)).bottom(), 249);
    for (int x : {30, 55})
        QCOMPARE(colourAt(image, x, 175), QStringLiteral("#000000"));
    for (int x : {55, 80})
        QCOMPARE(colourAt(image, x, 225), QStringLiteral("#000000"));
    QCOMPARE(colourAt(image, 42, 150), QStringLiteral("#000000"));
    QCOMPARE(colourAt(image, 67, 250), QStringLiteral("#000000"));
    QCOMPARE(colourAt(image, 42, 200), QStringLiteral("#ffffff"));
}

void TestBarPicture::lengths_data()
{
    addColumns<int, QRect>("value", "expected");

    addRow("less than a pixel", 19, QRect());
    addRow("less than a pixel, negative", -19, QRect());
    addRow("one pixel up", 20, corners(30, 199, 55, 199));
    addRow("one pixel down", -20, corners(30, 201, 55, 201));
    addRow("two pixels up", 40, corners(30, 198, 55, 199));
    addRow("just not two pixels up", 39, corners(30, 199, 55, 199));
    addRow("half scale reaches the edge of its half", 3500, corners(30, 25, 55, 199));
    addRow("beyond the top of the widget", 7000, corners(30, 0, 55, 199));
}

void TestBarPicture::lengths()
{
    QFETCH(int, value);
    setSignals(view, {value});
    const QImage image = paint();
    const QRect extent = extentOf(image, value > 0 ? rise : fall, QRect(21, 0, 94, 350));
    QTEST(extent, "expected");
}

void TestBarPicture::nothingIsClipped()
{
    view->classicMode = false;
    setSignals(view, {7000, 0, -7000});
    const QImage image = paint();
    QCOMPARE(image.pixelColor(54, 5), QColor(0, 0, 250));
    QCOMPARE(image.pixelColor(104, 480), QColor(250, 190, 40));
    // The dial is painted later and lies over the bar.
    QCOMPARE(image.pixelColor(95, 425), QColor(0, 0, 0));
}

void TestBarPicture::modeAtTheNextPicture()
{
    setSignals(view, {1000});
    QCOMPARE(colourAt(paint(), 42, 150), QStringLiteral("#6ee6c8"));
    view->OnClickedClassicMode(Qt::Unchecked);
    const QImage image = paint();
    QCOMPARE(colourAt(image, 42, 150), QStringLiteral("#000000"));
    QCOMPARE(image.pixelColor(54, 175), QColor(0, 0, 250));
    view->OnClickedClassicMode(Qt::Checked);
    QCOMPARE(colourAt(paint(), 42, 150), QStringLiteral("#6ee6c8"));
}

void TestBarPicture::sizes_data()
{
    addColumns<QSize, int, int>("area", "centre", "top");

    // height = bottom - 89, centre = 5 + height / 2, top = centre - 1000 * height / 7000
    addRow("300x200", QSize(300, 200), 60, 45);       // 199 - 89 = 110, 15.7
    addRow("800x500", QSize(800, 500), 210, 152);     // 499 - 89 = 410, 58.6
    addRow("801x501", QSize(801, 501), 210, 152);     // 500 - 89 = 411, 58.7
    addRow("1600x1000", QSize(1600, 1000), 460, 330); // 999 - 89 = 910, 130
}

void TestBarPicture::sizes()
{
    QFETCH(QSize, area);
    QFETCH(int, centre);
    QFETCH(int, top);
    setSignals(view, {1000, 0, 0, 0, 0, 0, 0, 0, 1000});
    const QImage image = pictureOf(view, QRect(QPoint(0, 0), area), area);
    QCOMPARE(extentOf(image, Qt::magenta, image.rect()), QRect());
    QCOMPARE(extentOf(image, rise, QRect(0, 0, 100, area.height())), corners(20, top, 45, centre - 1));
    QCOMPARE(extentOf(image, rise, QRect(205, 0, 90, area.height())), corners(260, top, 285, centre - 1));
    QCOMPARE(extentOf(image, white, QRect(0, 0, 100, centre + 20)), corners(20, centre, 95, centre));
}

void TestBarPicture::twoPixelsToOne()
{
    view->classicMode = false;
    setSignals(view, {1000});
    const QImage image = paint(2);
    QCOMPARE(image.size(), QSize(960, 1000));
    QCOMPARE(extentOf(image, Qt::black, image.rect()), corners(20, 40, 819, 919));
    // The hairline stays a pixel wide, the white line has two.
    QCOMPARE(colourAt(image, 60, 350), QStringLiteral("#000000"));
    QVERIFY(isAbout(image.pixelColor(61, 350), QColor(1, 1, 95))); // 0.75 / 24
    QCOMPARE(image.pixelColor(109, 350), QColor(0, 0, 250));
    QCOMPARE(colourAt(image, 110, 350), QStringLiteral("#000000"));
    QCOMPARE(extentOf(image, white, QRect(42, 40, 188, 680)).height(), 2);
    QCOMPARE(colourAt(image, 100, 400), QStringLiteral("#ffffff"));

    view->classicMode = true;
    const QImage classic = paint(2);
    QCOMPARE(extentOf(classic, rise, QRect(42, 40, 188, 680)).width(), 52);
    QCOMPARE(colourAt(classic, 85, 300), QStringLiteral("#6ee6c8"));
    QCOMPARE(colourAt(classic, 85, 350), QStringLiteral("#000000"));
}

PADSCOPE_TESTS(TestBarPicture);
#include "tst_barpicture.moc"
