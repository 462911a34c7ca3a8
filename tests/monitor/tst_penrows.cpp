#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

/// The rows that reports about pens make, blank by blank. Bytes that are not read hold 0xee.
class PenRows : public QObject
{
    Q_OBJECT

private slots:
    void penIdentity_data();
    void penIdentity() { checkRow(); }
    void dualPen_data();
    void dualPen() { checkRow(); }
    void position_data();
    void position() { checkRow(); }

private:
    static void addColumns();
    static void checkRow();
};

void PenRows::addColumns()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
}

void PenRows::checkRow()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.rows(), QStringList{text});
    QCOMPARE(monitorView.label(), text);
}

void PenRows::penIdentity_data()
{
    addColumns();
    QTest::newRow("ordinary values") << QByteArray("09 a2 00 0300 d1ff 0001")
                                     << "Q:            -47     Button:          256 Pen:        Unknown: 3";
    QTest::newRow("negative values") << QByteArray("09 a2 00 0100 f8ff e3ff")
                                     << "Q:             -8     Button:          -29 Pen:        Student";
    QTest::newRow("largest values")
        << QByteArray("09 a2 00 ffff ff7f ff7f")
        << "Q:          32767     Button:        32767 Pen:        Unknown: 65535";
    QTest::newRow("smallest values") << QByteArray("09 a2 00 0000 0080 0080")
                                     << "Q:         -32768     Button:       -32768 Pen:        Teacher";
    QTest::newRow("every bit set") << QByteArray("09 a2 00 ffff ffff ffff")
                                   << "Q:             -1     Button:           -1 Pen:        Unknown: 65535";
    QTest::newRow("teacher") << QByteArray("09 a2 00 0000 0100 0200")
                             << "Q:              1     Button:            2 Pen:        Teacher";
    QTest::newRow("student") << QByteArray("09 a2 00 0100 0100 0200")
                             << "Q:              1     Button:            2 Pen:        Student";
    QTest::newRow("first kind that is unknown")
        << QByteArray("09 a2 00 0200 0100 0200")
        << "Q:              1     Button:            2 Pen:        Unknown: 2";
    QTest::newRow("kind 256, a teacher but for its high byte")
        << QByteArray("09 a2 00 0001 0100 0200")
        << "Q:              1     Button:            2 Pen:        Unknown: 256";
    QTest::newRow("kind 65535 is not negative")
        << QByteArray("09 a2 00 ffff 0100 0200")
        << "Q:              1     Button:            2 Pen:        Unknown: 65535";
    QTest::newRow("length byte is not tested")
        << QByteArray("00 a2 00 0000 0100 0200")
        << "Q:              1     Button:            2 Pen:        Teacher";
}

void PenRows::dualPen_data()
{
    addColumns();
    QTest::newRow("ordinary values")
        << QByteArray("1a a3 0300 b1e6fcff 00e11000 e803 eeee 8cca0000 9babffff 4d00")
        << "Pen  3: X:  -203087 Y:  1106176 Flag     1000,  Pen  3: X:    51852 Y:   -21605 "
           "Flag       77";
    QTest::newRow("negative values")
        << QByteArray("1a a3 0100 f8ffffff e3ffffff 0400 eeee 8fffffff 50ffffff 0700")
        << "Pen  1: X:       -8 Y:      -29 Flag        4,  Pen  1: X:     -113 Y:     -176 "
           "Flag        7";
    QTest::newRow("largest values")
        << QByteArray("1a a3 ffff ffffff7f ffffff7f ffff eeee ffffff7f ffffff7f ffff")
        << "Pen 65535: X: 2147483647 Y: 2147483647 Flag    65535,  Pen 65535: X: 2147483647 Y: "
           "2147483647 Flag    65535";
    QTest::newRow("smallest values")
        << QByteArray("1a a3 0000 00000080 00000080 0000 eeee 00000080 00000080 0000")
        << "Pen  0: X: -2147483648 Y: -2147483648 Flag        0,  Pen  0: X: -2147483648 Y: "
           "-2147483648 Flag        0";
    QTest::newRow("every bit set")
        << QByteArray("1a a3 ffff ffffffff ffffffff ffff ffff ffffffff ffffffff ffff")
        << "Pen 65535: X:       -1 Y:       -1 Flag    65535,  Pen 65535: X:       -1 Y:       -1 "
           "Flag    65535";
}

void PenRows::position_data()
{
    addColumns();
    QTest::newRow("ordinary values")
        << QByteArray("1f a4 00 0300 2f00 00e11000 e8ee4100 0c00 0500 4d00 0f27 2c01 1027 0400 "
                      "5800")
        << "Q:     3  Px:    47 X:  1106176 Y:  4321000 Fine X:    12   Fine Y:     5   "
           "XPitchNo:    77 YPitchNo:  9999  DriveX:   300 PolX: 10000 DriveY:     4 PolY:    88";
    QTest::newRow("negative values")
        << QByteArray("1f a4 00 0100 0200 e3ffffff c0ffffff 0500 0600 0700 0800 0900 0a00 0b00 "
                      "0c00")
        << "Q:     1  Px:     2 X:      -29 Y:      -64 Fine X:     5   Fine Y:     6   "
           "XPitchNo:     7 YPitchNo:     8  DriveX:     9 PolX:    10 DriveY:    11 PolY:    12";
    QTest::newRow("largest values")
        << QByteArray("1f a4 00 ffff ffff ffffff7f ffffff7f ffff ffff ffff ffff ffff ffff ffff "
                      "ffff")
        << "Q: 65535  Px: 65535 X: 2147483647 Y: 2147483647 Fine X: 65535   Fine Y: 65535   "
           "XPitchNo: 65535 YPitchNo: 65535  DriveX: 65535 PolX: 65535 DriveY: 65535 PolY: 65535";
    QTest::newRow("smallest values")
        << QByteArray("1f a4 00 0000 0000 00000080 00000080 0000 0000 0000 0000 0000 0000 0000 "
                      "0000")
        << "Q:     0  Px:     0 X: -2147483648 Y: -2147483648 Fine X:     0   Fine Y:     0   "
           "XPitchNo:     0 YPitchNo:     0  DriveX:     0 PolX:     0 DriveY:     0 PolY:     0";
    QTest::newRow("every bit set")
        << QByteArray("1f a4 00 ffff ffff ffffffff ffffffff ffff ffff ffff ffff ffff ffff ffff "
                      "ffff")
        << "Q: 65535  Px: 65535 X:       -1 Y:       -1 Fine X: 65535   Fine Y: 65535   XPitchNo: "
           "65535 YPitchNo: 65535  DriveX: 65535 PolX: 65535 DriveY: 65535 PolY: 65535";
}

PADSCOPE_TEST_MAIN(PenRows)
#include "tst_penrows.moc"
