#include <climits>
#include <cmath>

#include "integermath.h"
#include "support/tests.h"

class TestIntegerMath : public QObject
{
    Q_OBJECT

private slots:
    void angle_data();
    void angle();
    void angleOfEveryTangent();
    void root_data();
    void root();
    void rootAroundEverySquare();
};

void TestIntegerMath::angle_data()
{
    addColumns<int, int, int>("x", "y", "expected");

    addRow("null vector", 0, 0, 0);
    addRow("right", 5, 0, 0);
    addRow("left", -5, 0, 4096);
    addRow("up", 0, 5, 2048);
    addRow("down", 0, -5, 6144);
    addRow("right and up", 1, 1, 1024);
    addRow("left and up", -1, 1, 3072);
    addRow("left and down", -1, -1, 5120);
    addRow("right and down", 1, -1, 7168);

    addRow("just above the right", 10000, 1, 0);
    addRow("just below the right: a full turn", 10000, -1, 8192);
    addRow("just above the left", -10000, 1, 4096);
    addRow("just below the left", -10000, -1, 4096);
    addRow("just right of up", 1, 10000, 2048);
    addRow("just left of up", -1, 10000, 2048);
    addRow("just right of down", 1, -10000, 6144);
    addRow("just left of down", -1, -10000, 6144);

    // 1 * 1024 / 1024 = 1, 1 * 1024 / 1025 = 0
    addRow("first tangent that counts", 1024, -1, 8191);
    addRow("last tangent that does not", 1025, -1, 8192);

    // atan(1/2) = 0.4636476, times 4096 / pi = 1303.7973 is 604.50
    addRow("two right, one up", 2, 1, 604);
    addRow("one right, two up", 1, 2, 1444);    // 2048 - 604
    addRow("one left, two up", -1, 2, 2652);    // 4096 - 1444
    addRow("two left, one up", -2, 1, 3492);    // 4096 - 604
    addRow("two left, one down", -2, -1, 4700); // 4096 + 604
    addRow("one left, two down", -1, -2, 5540); // 4096 + 1444
    addRow("one right, two down", 1, -2, 6748); // 8192 - 1444
    addRow("two right, one down", 2, -1, 7588); // 8192 - 604

    addRow("smallest left", INT_MIN, 0, 4096);
    addRow("smallest down", 0, INT_MIN, 6144);
    addRow("smallest both", INT_MIN, INT_MIN, 5120);
    addRow("largest both", INT_MAX, INT_MAX, 1024);
    // (2^31 - 1) * 1024 / 2^31 = 1023, whose angle is 1023
    addRow("smallest and largest", INT_MIN, INT_MAX, 3073); // 4096 - 1023
    addRow("largest and smallest", INT_MAX, INT_MIN, 7167); // 8192 - (2048 - 1023)
    addRow("smallest left, just above", INT_MIN, 1, 4096);
    addRow("smallest down, just right", 1, INT_MIN, 6144);
}

void TestIntegerMath::angle()
{
    QFETCH(int, x);
    QFETCH(int, y);
    QTEST(ArcTan(x, y), "expected");
}

void TestIntegerMath::angleOfEveryTangent()
{
    // atan(i / 1024) * 4096 / pi, worked out by hand and cut: 1.27, 2.55, 3.82, 5.09, 6.37, 7.64, 8.91, 10.19
    const int first[] = {0, 1, 2, 3, 5, 6, 7, 8, 10};
    for (int i = 0; i <= 8; ++i)
        QCOMPARE(ArcTan(1024, i), first[i]);
    QCOMPARE(ArcTan(1024, 100), 126); // atan(0.09765625) = 0.0973476: 126.92
    QCOMPARE(ArcTan(1024, 256), 319); // atan(0.25) = 0.2449787: 319.40
    QCOMPARE(ArcTan(1024, 768), 838); // atan(0.75) = 0.6435011: 838.995
    QCOMPARE(ArcTan(1024, 1022), 1022);
    QCOMPARE(ArcTan(1024, 1023), 1023);
    QCOMPARE(ArcTan(1024, 1024), 1024);

    // Each angle is the largest whose tangent is not above the vector's.
    const double unit = std::acos(-1.0) / 4096;
    for (int i = 1; i < 1024; ++i) {
        const int angle = ArcTan(1024, i);
        QVERIFY2(std::tan(angle * unit) <= i / 1024.0, qPrintable(QString::number(i)));
        QVERIFY2(std::tan((angle + 1) * unit) > i / 1024.0, qPrintable(QString::number(i)));
    }
}

void TestIntegerMath::root_data()
{
    addColumns<qlonglong, int>("value", "expected");

    addRow("zero", 0LL, 0);
    addRow("one", 1LL, 1);
    addRow("below four", 3LL, 1);
    addRow("four", 4LL, 2);
    addRow("negative", -16LL, 4);
    addRow("negative, below a square", -15LL, 3);
    addRow("below the first trial bit", 1073741823LL, 32767);
    addRow("the first trial bit", 1073741824LL, 32768);
    addRow("below the largest square", 4294836224LL, 65534); // 65535^2 - 1
    addRow("largest square", 4294836225LL, 65535);
    addRow("largest that is exact", 4294967295LL, 65535);
    addRow("smallest that saturates", 4294967296LL, 65535);
    addRow("ten thousand million", 10000000000LL, 65535);
    addRow("negative that saturates", -10000000000LL, 65535);
    addRow("largest of all", qlonglong{LONG_MAX}, 65535);
    addRow("smallest of all", qlonglong{LONG_MIN}, 65535);
}

void TestIntegerMath::root()
{
    QFETCH(qlonglong, value);
    QTEST(sqrt32(static_cast<long>(value)), "expected");
}

void TestIntegerMath::rootAroundEverySquare()
{
    for (long n = 1; n <= 65535; ++n) {
        const QByteArray number = QByteArray::number(static_cast<qlonglong>(n));
        QVERIFY2(sqrt32(n * n - 1) == n - 1, number);
        QVERIFY2(sqrt32(n * n) == n, number);
        QVERIFY2(sqrt32(-(n * n)) == n, number);
    }
}

PADSCOPE_TESTS(TestIntegerMath);
#include "tst_integermath.moc"
