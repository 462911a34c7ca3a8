#include <vector>

#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

/// Reports that are shorter than their fields: a missing byte counts as zero.
class ShortReports : public QObject
{
    Q_OBJECT

private slots:
    void rowIsThatOfZeros_data();
    void rowIsThatOfZeros();
    void everyLengthIsShownAsIfFilledWithZeros_data();
    void everyLengthIsShownAsIfFilledWithZeros();
    void everyTypeAtLengthsZeroToTwo();
};

void ShortReports::rowIsThatOfZeros_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("no byte") << QByteArray("") << "";
    QTest::newRow("one byte") << QByteArray("28") << "(   28 ";
    QTest::newRow("one byte that is not printable") << QByteArray("ff") << ".   ff ";
    QTest::newRow("signal, three bytes")
        << QByteArray("0a 2f 04") << "0:     0  60:     0  120:     0  Integs:   0";
    QTest::newRow("signal, half a value")
        << QByteArray("0a 2f 04 ff") << "0:   255  60:     0  120:     0  Integs:   0";
    QTest::newRow("signal, all but the last byte")
        << QByteArray("0a 2f 04 ffff ffff ffff") << "0:    -1  60:    -1  120:    -1  Integs:   0";
    QTest::newRow("fine and coarse, nothing of them")
        << QByteArray("28 2f 01")
        << "X Fine 0:     0   60:     0   120:     0 / Y Fine  0:     0   60     0   120:     0 / "
           "X Crse 0:     0   60:     0   120:     0 / Y Crse  0:     0   60     0   120:     0 / "
           "Freq     0";
    QTest::newRow("fine and coarse, all but half a frequency")
        << QByteArray("28 2f 01 eeeeeeeeeeeeeeeeeeee ffff ffff ffff ffff ffff ffff ffff ffff ffff "
                      "ffff ffff ffff ff")
        << "X Fine 0:    -1   60:    -1   120:    -1 / Y Fine  0:    -1   60    -1   120:    -1 / "
           "X Crse 0:    -1   60:    -1   120:    -1 / Y Crse  0:    -1   60    -1   120:    -1 / "
           "Freq   255";
    QTest::newRow("raw and normalised, nothing of them")
        << QByteArray("28 2f 02")
        << "Raw 0:     0   60:     0   120:     0 / Integs:   0/ Norm 0:     0   60     0   "
           "120:     0";
    QTest::newRow("quality summary, up to the slots")
        << QByteArray("0e 2f 03 ff ff") << "Q: Flag 255 Pass 255 AvQ     0 MinQ     0 MaxQ     0";
    QTest::newRow("integrators and normalised, cut at the second group")
        << QByteArray("10 2f 05 ffff ffff ffff ff")
        << "0:    -1  60:    -1  120:    -1  Integs: 255 / Norm 0:     0  60:     0  120:     0";
    QTest::newRow("counters, cut in a four-byte value")
        << QByteArray("19 2f 06 ffff ffff ffff ffff ffff ffff ffff")
        << "Q: X    -1 Y    -1 Avg    -1 Min    -1 Max    -1, Rise/Full X 65535 /      65535   "
           "Y     0 /          0";
    QTest::newRow("signal, no sub-type") << QByteArray("0a 2f") << "";
    QTest::newRow("phase, two bytes")
        << QByteArray("28 68")
        << "X Rs 0:     0  60:     0  120:     0 X Full 0:     0  60:     0  120:     0  Y Rs "
           "0:     0  60:     0  120:     0 Y Full 0:     0  60:     0  120:     0     X Rs "
           "Num:   0  Y Rs Num:   0   X Fn Num   0 Y Fn Num   0   X Q:     0 Y Q:     0   DC "
           "Offsets: 0:     0  60:     0  120     0";
    QTest::newRow("phase, high byte of the first value")
        << QByteArray("28 68 ff")
        << "X Rs 0:  -256  60:     0  120:     0 X Full 0:     0  60:     0  120:     0  Y Rs "
           "0:     0  60:     0  120:     0 Y Full 0:     0  60:     0  120:     0     X Rs "
           "Num:   0  Y Rs Num:   0   X Fn Num   0 Y Fn Num   0   X Q:     0 Y Q:     0   DC "
           "Offsets: 0:     0  60:     0  120     0";
    QTest::newRow("pen identity, two bytes")
        << QByteArray("09 a2") << "Q:              0     Button:            0 Pen:        Teacher";
    QTest::newRow("pen identity, low byte of the kind")
        << QByteArray("09 a2 00 01") << "Q:              0     Button:            0 Pen:        Student";
    QTest::newRow("dual pen, two bytes")
        << QByteArray("1a a3")
        << "Pen  0: X:        0 Y:        0 Flag        0,  Pen  0: X:        0 Y:        0 "
           "Flag        0";
    QTest::newRow("dual pen, cut in the first x")
        << QByteArray("1a a3 0500 ffffff")
        << "Pen  5: X: 16777215 Y:        0 Flag        0,  Pen  5: X:        0 Y:        0 "
           "Flag        0";
    QTest::newRow("position, two bytes")
        << QByteArray("1f a4")
        << "Q:     0  Px:     0 X:        0 Y:        0 Fine X:     0   Fine Y:     0   "
           "XPitchNo:     0 YPitchNo:     0  DriveX:     0 PolX:     0 DriveY:     0 PolY:     0";
    QTest::newRow("position, cut in y")
        << QByteArray("1f a4 00 0100 0200 03000000 ffff")
        << "Q:     1  Px:     2 X:        3 Y:    65535 Fine X:     0   Fine Y:     0   "
           "XPitchNo:     0 YPitchNo:     0  DriveX:     0 PolX:     0 DriveY:     0 PolY:     0";
    QTest::newRow("unknown, two bytes") << QByteArray("00 21") << ".!   00 21 ";
    QTest::newRow("unknown, type 0") << QByteArray("41 00") << "A.   41 00 ";
    QTest::newRow("signal with a wrong length byte") << QByteArray("0c 2f") << "./   0c 2f ";
    QTest::newRow("phase with a wrong length byte") << QByteArray("29 68") << ")h   29 68 ";
}

void ShortReports::rowIsThatOfZeros()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.rows(), QStringList{text});
}

void ShortReports::everyLengthIsShownAsIfFilledWithZeros_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("fullLength");
    QTest::newRow("fine and coarse") << QByteArray("28 2f 01") << 40;
    QTest::newRow("raw and normalised") << QByteArray("28 2f 02") << 40;
    QTest::newRow("quality summary") << QByteArray("0e 2f 03") << 14;
    QTest::newRow("integrators") << QByteArray("0a 2f 04") << 10;
    QTest::newRow("integrators and normalised") << QByteArray("10 2f 05") << 16;
    QTest::newRow("quality and counters") << QByteArray("19 2f 06") << 25;
    QTest::newRow("phase") << QByteArray("28 68") << 40;
    QTest::newRow("voltage") << QByteArray("34 77 0c") << 5;
    QTest::newRow("pen identity") << QByteArray("09 a2") << 9;
    QTest::newRow("dual pen") << QByteArray("1a a3") << 26;
    QTest::newRow("position") << QByteArray("1f a4") << 31;
}

// The row of a short report is the row of the report that does hold the zeros.
void ShortReports::everyLengthIsShownAsIfFilledWithZeros()
{
    QFETCH(QByteArray, header);
    QFETCH(int, fullLength);
    const QByteArray start = QByteArray::fromHex(header);
    const QByteArray full = start + QByteArray(fullLength - start.size(), '\xab');
    MonitorView monitorView;
    for (int length = start.size(); length <= fullLength; ++length) {
        // A buffer of its own size, so that a sanitizer sees a byte read too far.
        const std::vector<char> report(full.cbegin(), full.cbegin() + length);
        monitorView.send(QByteArray::fromRawData(report.data(), length));
        monitorView.forgetPrevious();
        monitorView.send(full.left(length) + QByteArray(fullLength - length, '\0'));
        monitorView.forgetPrevious();
        const QStringList rows = monitorView.rows();
        QVERIFY(rows.size() >= 2);
        QCOMPARE(rows.at(rows.size() - 2), rows.last());
        QVERIFY(!rows.last().isEmpty());
    }
}

void ShortReports::everyTypeAtLengthsZeroToTwo()
{
    MonitorView monitorView;
    for (int type = 0; type < 256; ++type) {
        const char report[] = {40, static_cast<char>(type)};
        for (int length = 0; length <= 2; ++length) {
            monitorView.send(QByteArray(report, length));
            monitorView.forgetPrevious();
        }
        // Text of two bytes holds no character; everything else makes a row.
        const bool isText = type == 50 || type == 119;
        QCOMPARE(monitorView.rows().size(), isText ? 2 : 3);
        QCOMPARE(monitorView.rows().mid(0, 2), (QStringList{"", "(   28 "}));
        QVERIFY(monitorView.view->pendingText.isEmpty());
        monitorView.view->model->removeRows(0, monitorView.view->model->rowCount());
    }
}

PADSCOPE_TEST_MAIN(ShortReports)
#include "tst_shortreports.moc"
