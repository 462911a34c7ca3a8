#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

/// The row and the two texts of a PhaseReport, blank by blank.
class PhaseRows : public QObject
{
    Q_OBJECT

private slots:
    void bothTexts_data();
    void bothTexts();
    void rowJoinsBothTexts();
};

void PhaseRows::bothTexts_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("ordinary values")
        << QByteArray("28 68 0003 ffd1 0100 03e8 000c fffb 004d 270f fed4 2710 0004 0058 22 15 1e "
                      "07 0002 f7ff 3d00 00f8 2d00")
        << "X Rs 0:     3  60:   -47  120:   256 X Full 0:  1000  60:    12  120:    -5  Y Rs "
           "0:    77  60:  9999  120:  -300 Y Full 0: 10000  60:     4  120:    88  "
        << "X Rs Num:  34  Y Rs Num:  21   X Fn Num  30 Y Fn Num   7   X Q:   512 Y Q:    -9   DC "
           "Offsets: 0:    61  60: -2048  120    45";
    QTest::newRow("negative values")
        << QByteArray("28 68 ffff fff8 ffe3 ffc0 ff8f ff50 ff03 fea8 fe3f fdc8 fd43 fcb0 0d 0e 0f "
                      "10 fff8 18f8 23f7 20f6 0ff5")
        << "X Rs 0:    -1  60:    -8  120:   -29 X Full 0:   -64  60:  -113  120:  -176  Y Rs 0:  "
           "-253  60:  -344  120:  -449 Y Full 0:  -568  60:  -701  120:  -848  "
        << "X Rs Num:  13  Y Rs Num:  14   X Fn Num  15 Y Fn Num  16   X Q: -1793 Y Q: -2024   DC "
           "Offsets: 0: -2269  60: -2528  120 -2801";
    QTest::newRow("largest values")
        << QByteArray("28 68 7fff 7fff 7fff 7fff 7fff 7fff 7fff 7fff 7fff 7fff 7fff 7fff ff ff ff "
                      "ff ff7f ff7f ff7f ff7f ff7f")
        << "X Rs 0: 32767  60: 32767  120: 32767 X Full 0: 32767  60: 32767  120: 32767  Y Rs 0: "
           "32767  60: 32767  120: 32767 Y Full 0: 32767  60: 32767  120: 32767  "
        << "X Rs Num: 255  Y Rs Num: 255   X Fn Num 255 Y Fn Num 255   X Q: 32767 Y Q: 32767   DC "
           "Offsets: 0: 32767  60: 32767  120 32767";
    QTest::newRow("smallest values")
        << QByteArray("28 68 8000 8000 8000 8000 8000 8000 8000 8000 8000 8000 8000 8000 00 00 00 "
                      "00 0080 0080 0080 0080 0080")
        << "X Rs 0: -32768  60: -32768  120: -32768 X Full 0: -32768  60: -32768  120: -32768  Y "
           "Rs 0: -32768  60: -32768  120: -32768 Y Full 0: -32768  60: -32768  120: -32768  "
        << "X Rs Num:   0  Y Rs Num:   0   X Fn Num   0 Y Fn Num   0   X Q: -32768 Y Q: -32768   "
           "DC Offsets: 0: -32768  60: -32768  120 -32768";
    QTest::newRow("every bit set")
        << QByteArray("28 68 ffff ffff ffff ffff ffff ffff ffff ffff ffff ffff ffff ffff ff ff ff "
                      "ff ffff ffff ffff ffff ffff")
        << "X Rs 0:    -1  60:    -1  120:    -1 X Full 0:    -1  60:    -1  120:    -1  Y Rs "
           "0:    -1  60:    -1  120:    -1 Y Full 0:    -1  60:    -1  120:    -1  "
        << "X Rs Num: 255  Y Rs Num: 255   X Fn Num 255 Y Fn Num 255   X Q:    -1 Y Q:    -1   DC "
           "Offsets: 0:    -1  60:    -1  120    -1";
}

void PhaseRows::bothTexts()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, first);
    QFETCH(QString, second);
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.label(), first);
    QCOMPARE(monitorView.rows(), QStringList{first + "   " + second});
}

// The two blanks that end the first text stand before the three that join.
void PhaseRows::rowJoinsBothTexts()
{
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(
        "28 68 fffe 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000 00 00 00 00 0000 "
        "0000 0000 0000 0000"));
    QCOMPARE(monitorView.rows(), QStringList{"X Rs 0:    -2  60:     0  120:     0 X Full 0:     0  "
                                             "60:     0  120:     0  Y Rs 0:     0  60:     0  "
                                             "120:     0 Y Full 0:     0  60:     0  120:     0     X "
                                             "Rs Num:   0  Y Rs Num:   0   X Fn Num   0 Y Fn Num   0   "
                                             "X Q:     0 Y Q:     0   DC Offsets: 0:     0  60:     0  "
                                             "120     0"});
}

PADSCOPE_TEST_MAIN(PhaseRows)
#include "tst_phaserows.moc"
