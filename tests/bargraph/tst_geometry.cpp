#include "geometry.h"
#include "support/tests.h"

class TestGeometry : public QObject
{
    Q_OBJECT

private slots:
    void barGroup_data();
    void barGroup();
    void barLength_data();
    void barLength();
    void bar();
    void dial_data();
    void dial();
    void dialTexts();
    void vector_data();
    void vector();
    void magnitude();
    void needle_data();
    void needle();
    void meter_data();
    void meter();
};

void TestGeometry::barGroup_data()
{
    addColumns<QRect, int, int, int, int>("area", "channel", "left", "centre", "height");

    // bottom 459: height 459 - 20 - 80 - 9, centre 20 + 5 + 350 / 2
    addRow("first channel", QRect(10, 20, 400, 440), 0, 30, 200, 350);
    addRow("second channel", QRect(10, 20, 400, 440), 1, 125, 200, 350);
    addRow("third channel", QRect(10, 20, 400, 440), 2, 220, 200, 350);
    addRow("fourth channel", QRect(10, 20, 400, 440), 3, 315, 200, 350);
    addRow("odd height", QRect(10, 20, 400, 441), 0, 30, 200, 351);
    addRow("even height again", QRect(10, 20, 400, 442), 0, 30, 201, 352);
    addRow("small", QRect(0, 0, 300, 200), 0, 20, 60, 110);
    addRow("large", QRect(0, 0, 1600, 1000), 3, 305, 460, 910);
    // bottom 132: height 132 + 7 - 89
    addRow("left of and above the origin", QRect(-30, -7, 200, 140), 0, -10, 23, 50);
    addRow("just without height", QRect(0, 0, 300, 90), 0, 20, 5, 0);
    addRow("lower than a dial", QRect(0, 0, 100, 50), 0, 20, -15, -40);
    addRow("lower than a dial, odd", QRect(0, 0, 100, 51), 0, 20, -14, -39);
    addRow("one pixel", QRect(0, 0, 1, 1), 0, 20, -39, -89);
}

void TestGeometry::barGroup()
{
    QFETCH(QRect, area);
    QFETCH(int, channel);
    const geometry::BarGroup group = geometry::barGroup(area, channel);
    QTEST(group.left, "left");
    QTEST(group.centre, "centre");
    QTEST(group.height, "height");
}

void TestGeometry::barLength_data()
{
    addColumns<int, int, int>("value", "height", "expected");

    addRow("nothing", 0, 350, 0);
    addRow("full scale rises", 7000, 350, -350);
    addRow("full scale falls", -7000, 350, 350);
    addRow("half scale", 3500, 350, -175);
    addRow("last that is no pixel", 19, 350, 0); // 0.95
    addRow("last negative that is no pixel", -19, 350, 0);
    addRow("first that is a pixel", 20, 350, -1);
    addRow("first negative that is a pixel", -20, 350, 1);
    addRow("cut toward zero", 39, 350, -1); // 1.95
    addRow("negative cut toward zero", -39, 350, 1);
    addRow("largest", 32767, 350, -1638);  // 1638.35
    addRow("smallest", -32768, 350, 1638); // 1638.4
    addRow("no height", 32767, 0, 0);
    addRow("negative height", 1000, -40, 5);          // 5.71
    addRow("beyond 32 bits", 32767, 100000, -468100); // 3276700000 / 7000
}

void TestGeometry::barLength()
{
    QFETCH(int, value);
    QFETCH(int, height);
    QTEST(geometry::barLength(value, height), "expected");
}

void TestGeometry::bar()
{
    const geometry::BarGroup group{30, 200, 350};
    QCOMPARE(geometry::bar(group, 0, 50), QRect(QPoint(30, 200), QPoint(54, 249)));
    QCOMPARE(geometry::bar(group, 1, 1), QRect(QPoint(55, 200), QPoint(79, 200)));
    QCOMPARE(geometry::bar(group, 2, 0), QRect(QPoint(80, 200), QPoint(104, 199)));
    // A rising bar is upside down.
    QCOMPARE(geometry::bar(group, 0, -1), QRect(QPoint(30, 200), QPoint(54, 198)));
    QCOMPARE(geometry::bar(group, 2, -50), QRect(QPoint(80, 200), QPoint(104, 149)));
}

void TestGeometry::dial_data()
{
    addColumns<QRect, int, QPoint, QRect>("area", "channel", "centre", "ellipse");

    // bottom 459: base 459 + 1 - 40 = 420, centre 420 - 5
    addRow("first channel", QRect(10, 20, 400, 440), 0, QPoint(70, 415),
           QRect(QPoint(30, 375), QPoint(109, 454)));
    addRow("second channel, 90 further", QRect(10, 20, 400, 440), 1, QPoint(160, 415),
           QRect(QPoint(120, 375), QPoint(199, 454)));
    addRow("third channel", QRect(10, 20, 400, 440), 2, QPoint(250, 415),
           QRect(QPoint(210, 375), QPoint(289, 454)));
    addRow("fourth channel", QRect(10, 20, 400, 440), 3, QPoint(340, 415),
           QRect(QPoint(300, 375), QPoint(379, 454)));
    addRow("odd height", QRect(10, 20, 400, 441), 0, QPoint(70, 416),
           QRect(QPoint(30, 376), QPoint(109, 455)));
    addRow("small", QRect(0, 0, 300, 200), 3, QPoint(330, 155), QRect(QPoint(290, 115), QPoint(369, 194)));
    addRow("lower than itself", QRect(0, 0, 100, 50), 0, QPoint(60, 5),
           QRect(QPoint(20, -35), QPoint(99, 44)));
}

void TestGeometry::dial()
{
    QFETCH(QRect, area);
    QFETCH(int, channel);
    const geometry::Dial dial = geometry::dial(area, channel);
    QTEST(dial.centre, "centre");
    QTEST(dial.ellipse(), "ellipse");
}

void TestGeometry::dialTexts()
{
    const geometry::Dial first = geometry::dial(QRect(10, 20, 400, 440), 0);
    QCOMPARE(first.magnitudeText(), QPoint(42, 397));
    QCOMPARE(first.angleText(), QPoint(42, 440));
    const geometry::Dial last = geometry::dial(QRect(10, 20, 400, 440), 3);
    QCOMPARE(last.magnitudeText(), QPoint(312, 397));
    QCOMPARE(last.angleText(), QPoint(312, 440));
}

void TestGeometry::vector_data()
{
    addColumns<int, int, int, QPoint>("c0", "c60", "c120", "expected");

    addRow("null", 0, 0, 0, QPoint(0, 0));
    addRow("at 0 degrees", 1000, 0, 0, QPoint(1000, 0));
    addRow("at 60 degrees", 0, 1000, 0, QPoint(500, 866)); // 512000 / 591 = 866.3
    addRow("at 120 degrees", 0, 0, 1000, QPoint(-500, 866));
    addRow("straight up", 0, 1000, 1000, QPoint(0, 1732)); // 1024000 / 591 = 1732.7
    addRow("straight down", 0, -1000, -1000, QPoint(0, -1732));
    addRow("odd, each half cut", 0, 3, 0, QPoint(1, 2)); // 1536 / 591 = 2.6
    addRow("negative odd, cut toward zero", 0, -3, 0, QPoint(-1, -2));
    addRow("halves cut one by one", 0, 3, -3, QPoint(2, 0));
    addRow("furthest right", 32767, 32767, -32768, QPoint(65534, 0));
    addRow("furthest left", -32768, -32768, 32767, QPoint(-65535, 0));
    addRow("furthest up", 0, 32767, 32767, QPoint(0, 56773));      // 33553408 / 591
    addRow("furthest down", 0, -32768, -32768, QPoint(0, -56775)); // 33554432 / 591 = 56775.7
}

void TestGeometry::vector()
{
    QFETCH(int, c0);
    QFETCH(int, c60);
    QFETCH(int, c120);
    QTEST(geometry::vectorOf(c0, c60, c120), "expected");
}

void TestGeometry::magnitude()
{
    QCOMPARE(geometry::magnitude(QPoint(0, 0)), 0);
    QCOMPARE(geometry::magnitude(QPoint(3, -4)), 5);
    QCOMPARE(geometry::magnitude(QPoint(7, 7)), 9); // 98
    QCOMPARE(geometry::magnitude(QPoint(-65535, 0)), 65535);
    // 65534^2 + 1000^2 = 4295705156, above 2^32
    QCOMPARE(geometry::magnitude(QPoint(65534, 1000)), 65535);
    QCOMPARE(geometry::magnitude(QPoint(-65535, -56775)), 65535);
}

void TestGeometry::needle_data()
{
    addColumns<QPoint, int, QPoint>("vector", "magnitude", "expected");

    addRow("null", QPoint(0, 0), 0, QPoint(0, 0));
    addRow("longest that is not shown", QPoint(9, 0), 9, QPoint(0, 0));
    addRow("shortest that is shown", QPoint(10, 0), 10, QPoint(40, 0));
    addRow("left", QPoint(-1000, 0), 1000, QPoint(-40, 0));
    addRow("up", QPoint(0, 1732), 1732, QPoint(0, -40));
    addRow("down", QPoint(0, -1732), 1732, QPoint(0, 40));
    // 8 * 40 / 11 = 29.1
    addRow("right and up, cut toward zero", QPoint(8, 8), 11, QPoint(29, -29));
    addRow("left and down, cut toward zero", QPoint(-8, -8), 11, QPoint(-29, 29));
    // 65534 * 40 / 65535 = 39.999, 56773 * 40 / 65535 = 34.7
    addRow("longer than the saturated magnitude", QPoint(65534, 56773), 65535, QPoint(39, -34));
}

void TestGeometry::needle()
{
    QFETCH(QPoint, vector);
    QFETCH(int, magnitude);
    QTEST(geometry::needle(vector, magnitude), "expected");
}

void TestGeometry::meter_data()
{
    addColumns<QRect, int, QRect, QPoint>("area", "raw", "bar", "firstText");

    // bottom 459, so 511 is 459 - 20 - 19 = 420 high; middle 20 + 440 / 2
    const QRect area(10, 20, 400, 440);
    addRow("zero", area, 0, QRect(QPoint(30, 449), QPoint(55, 449)), QPoint(67, 240));
    addRow("less than a pixel", area, 1, QRect(QPoint(30, 449), QPoint(55, 449)), QPoint(67, 240));
    addRow("a pixel", area, 2, QRect(QPoint(30, 448), QPoint(55, 449)), QPoint(67, 240));
    addRow("510", area, 510, QRect(QPoint(30, 30), QPoint(55, 449)), QPoint(67, 240)); // 419.2
    addRow("511", area, 511, QRect(QPoint(30, 29), QPoint(55, 449)), QPoint(67, 240));
    // 420 * 1023 / 511 = 840.8
    addRow("1023 overshoots", area, 1023, QRect(QPoint(30, -391), QPoint(55, 449)), QPoint(67, 240));
    addRow("odd height", QRect(10, 20, 400, 441), 511, QRect(QPoint(30, 29), QPoint(55, 450)),
           QPoint(67, 240));
    addRow("even height again", QRect(10, 20, 400, 442), 0, QRect(QPoint(30, 451), QPoint(55, 451)),
           QPoint(67, 241));
    // bottom 9: 511 is 9 - 0 - 19 = -10 high
    addRow("lower than its margins", QRect(0, 0, 10, 10), 511, QRect(QPoint(20, 9), QPoint(45, -1)),
           QPoint(57, 5));
}

void TestGeometry::meter()
{
    QFETCH(QRect, area);
    QFETCH(int, raw);
    QFETCH(QPoint, firstText);
    const geometry::Meter meter = geometry::meter(area, raw);
    QTEST(meter.bar, "bar");
    QCOMPARE(meter.rawText, firstText);
    QCOMPARE(meter.voltsText, firstText + QPoint(0, 25));
    QCOMPARE(meter.extremesText, firstText + QPoint(0, 50));
}

PADSCOPE_TESTS(TestGeometry);
#include "tst_geometry.moc"
