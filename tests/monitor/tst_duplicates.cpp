#include <QTest>

#include "monitor/monitorview.h"
#include "support/tests.h"

namespace {

// A PositionReport, and reports of other types with the same checksum: 0x370f.
const char positionHex[] = "1f a4 00 0300 2f00 00e11000 e8ee4100 0c00 0500 4d00 0f27 2c01 1027 0400 5800";
const char penIdentityAlikeHex[] = "09 a2 00 0100 f8ff 217d";
const char unknownAlikeHex[] = "05 21 41 e0 0f";

const char positionRow[] = "Q:     3  Px:    47 X:  1106176 Y:  4321000 Fine X:    12   Fine Y:     5   "
                           "XPitchNo:    77 YPitchNo:  9999  DriveX:   300 PolX: 10000 DriveY:     4 "
                           "PolY:    88";
const char unknownAlikeRow[] = ".!A..   05 21 41 e0 0f ";

} // namespace

/// Which reports are dropped because the one before them had the same checksum.
class Duplicates : public QObject
{
    Q_OBJECT

private slots:
    void checksumsAreAsWritten_data();
    void checksumsAreAsWritten();
    void knownReportTwiceGivesOneRow_data();
    void knownReportTwiceGivesOneRow();
    void unknownReportTwiceGivesTwoRows();
    void knownReportComesBackAfterAnother();
    void otherTypeWithTheSameChecksumIsDropped();
    void onlyTheChecksumCounts();
    void unknownTypeIsNotCompared();
    void knownTypeIsComparedWithAnUnknownOne();
    void firstReportAlikeTheDummy_data();
    void firstReportAlikeTheDummy();
    void firstReportAlikeTheDummyButUnknown();
    void firstTextAlikeTheDummy();
    void repeatedTextIsNotCollected();
    void previousPacketIsTheLastShown();
    void droppedReportLeavesThePreviousPacket();
    void previousPacketIsACopy();
};

void Duplicates::checksumsAreAsWritten_data()
{
    addColumns<QByteArray, quint16>("report", "checksum");
    addRow("the dummy before the first report", QByteArray("HH"), quint16{0x49ad});
    addRow("position", hex(positionHex), quint16{0x370f});
    addRow("pen identity", hex(penIdentityAlikeHex), quint16{0x370f});
    addRow("unknown", hex(unknownAlikeHex), quint16{0x370f});
    addRow("pen identity, one byte away", hex("09 a2 00 0100 f8ff 207d"), quint16{0x2ed7});
}

void Duplicates::checksumsAreAsWritten()
{
    QFETCH(QByteArray, report);
    QFETCH(quint16, checksum);
    QCOMPARE(qChecksum(report.constData(), static_cast<uint>(report.size())), checksum);
}

void Duplicates::knownReportTwiceGivesOneRow_data()
{
    QTest::addColumn<QByteArray>("report");
    addRow("signal", hex("0a 2f 04 0100 0200 0300 04"));
    addRow("signal of a sub-type without fields", hex("0a 2f 09 0100 0200 0300 04"));
    addRow("signal with a length byte that is wrong", hex("0c 2f 04 0100 0200 0300 04"));
    addRow("phase", hex("28 68 01 02"));
    addRow("phase with a length byte that is wrong", hex("29 68 01 02"));
    addRow("voltage", hex("34 77 0c 10 01"));
    addRow("pen identity", hex("09 a2 00 0100 0200 0300"));
    addRow("dual pen", hex("1a a3 01 00 05"));
    addRow("position", hex(positionHex));
}

void Duplicates::knownReportTwiceGivesOneRow()
{
    QFETCH(QByteArray, report);
    MonitorView monitorView;
    monitorView.send(report);
    QCOMPARE(monitorView.rows().size(), 1);
    monitorView.send(report);
    QCOMPARE(monitorView.rows().size(), 1);
}

void Duplicates::unknownReportTwiceGivesTwoRows()
{
    MonitorView monitorView;
    monitorView.send(hex(unknownAlikeHex));
    monitorView.send(hex(unknownAlikeHex));
    QCOMPARE(monitorView.rows(), (QStringList{unknownAlikeRow, unknownAlikeRow}));
}

void Duplicates::knownReportComesBackAfterAnother()
{
    MonitorView monitorView;
    monitorView.send(hex(positionHex));
    monitorView.send(hex("0a 2f 04 0100 0200 0300 04"));
    monitorView.send(hex(positionHex));
    QCOMPARE(monitorView.rows(),
             (QStringList{positionRow, "0:     1  60:     2  120:     3  Integs:   4", positionRow}));
}

void Duplicates::otherTypeWithTheSameChecksumIsDropped()
{
    MonitorView monitorView;
    monitorView.send(hex(positionHex));
    monitorView.send(hex(penIdentityAlikeHex));
    QCOMPARE(monitorView.rows(), QStringList{positionRow});

    // One bit of the last value away, it is shown.
    monitorView.send(hex("09 a2 00 0100 f8ff 207d"));
    QCOMPARE(monitorView.rows(),
             (QStringList{positionRow, "Q:             -8     Button:        32032 Pen:        Student"}));
}

// The packet's own checksum is what is compared, not one made of its bytes.
void Duplicates::onlyTheChecksumCounts()
{
    MonitorView monitorView;
    _DataPacket first{hex("09 a2 00 0100 0200 0300"), 9, 7, 1001, noon};
    _DataPacket otherBytes{hex("0a 2f 04 0100 0200 0300 04"), 10, 7, 1002, QTime(12, 1)};
    _DataPacket otherChecksum{hex("09 a2 00 0100 0200 0300"), 9, 8, 1001, noon};
    monitorView.view->Display(&first);
    monitorView.view->Display(&otherBytes);
    QCOMPARE(monitorView.rows().size(), 1);
    monitorView.view->Display(&otherChecksum);
    QCOMPARE(monitorView.rows(),
             (QStringList{"Q:              2     Button:            3 Pen:        Student",
                          "Q:              2     Button:            3 Pen:        Student"}));
}

void Duplicates::unknownTypeIsNotCompared()
{
    MonitorView monitorView;
    monitorView.send(hex(positionHex));
    monitorView.send(hex(unknownAlikeHex));
    QCOMPARE(monitorView.rows(), (QStringList{positionRow, unknownAlikeRow}));
}

void Duplicates::knownTypeIsComparedWithAnUnknownOne()
{
    MonitorView monitorView;
    monitorView.send(hex(unknownAlikeHex));
    monitorView.send(hex(positionHex));
    QCOMPARE(monitorView.rows(), QStringList{unknownAlikeRow});
}

// Each of these has the checksum of the two bytes "HH".
void Duplicates::firstReportAlikeTheDummy_data()
{
    addColumns<QByteArray, QByteArray>("report", "oneBitAway");
    addRow("signal", hex("0a 2f 04 21 1b"), hex("0a 2f 04 20 1b"));
    addRow("phase", hex("28 68 41 65 b3"), hex("28 68 41 64 b3"));
    addRow("pen identity", hex("09 a2 41 58 dd"), hex("09 a2 41 59 dd"));
    addRow("dual pen", hex("09 a3 41 80 c4"), hex("09 a3 41 81 c4"));
    addRow("position", hex("09 a4 41 88 89"), hex("09 a4 41 89 89"));
}

void Duplicates::firstReportAlikeTheDummy()
{
    QFETCH(QByteArray, report);
    QFETCH(QByteArray, oneBitAway);
    MonitorView monitorView;
    QVERIFY(!monitorView.view->previousPacket);
    monitorView.send(report);
    QCOMPARE(monitorView.rows(), QStringList());
    QVERIFY(monitorView.view->previousPacket);
    QCOMPARE(monitorView.view->previousPacket->data, QByteArray("HH"));
    QCOMPARE(monitorView.view->previousPacket->length, quint32{2});
    QCOMPARE(monitorView.view->previousPacket->checksum, quint32{0x49ad});
    QCOMPARE(monitorView.view->previousPacket->device, 0);
    QVERIFY(monitorView.view->previousPacket->time.isValid());
    monitorView.send(oneBitAway);
    QCOMPARE(monitorView.rows().size(), 1);
}

void Duplicates::firstReportAlikeTheDummyButUnknown()
{
    MonitorView monitorView;
    monitorView.send(hex("09 21 41 fc 7b"));
    QCOMPARE(monitorView.rows(), QStringList{".!A.{   09 21 41 fc 7b "});
}

void Duplicates::firstTextAlikeTheDummy()
{
    MonitorView monitorView;
    monitorView.send(hex("09 32 41 05 c4"));
    monitorView.send(hex("09 77 41 db fc"));
    QCOMPARE(monitorView.view->pendingText, QString());
    monitorView.send(hex("09 32 41 05 c5"));
    QCOMPARE(monitorView.view->pendingText, QString("A.."));
}

void Duplicates::repeatedTextIsNotCollected()
{
    MonitorView monitorView;
    monitorView.send(hex("05 32 41 42 43"));
    QCOMPARE(monitorView.view->pendingText, QString("ABC"));
    monitorView.send(hex("05 32 41 42 43"));
    QCOMPARE(monitorView.view->pendingText, QString("ABC"));
    monitorView.send(hex("05 32 41 42 44"));
    QCOMPARE(monitorView.view->pendingText, QString("ABCABD"));
}

void Duplicates::previousPacketIsTheLastShown()
{
    MonitorView monitorView;
    _DataPacket packet{hex("0a 2f 04 0100 0200 0300 04"), 10, 12345, 77, QTime(1, 2, 3, 4)};
    monitorView.view->Display(&packet);
    const _DataPacket *previous = monitorView.view->previousPacket;
    QCOMPARE(previous->data, hex("0a 2f 04 0100 0200 0300 04"));
    QCOMPARE(previous->length, quint32{10});
    QCOMPARE(previous->checksum, quint32{12345});
    QCOMPARE(previous->device, 77);
    QCOMPARE(previous->time, QTime(1, 2, 3, 4));

    // Raw reports, of an unknown type or with a wrong length byte, take its place as well.
    monitorView.send(hex(unknownAlikeHex), QTime(5, 0));
    QCOMPARE(previous->data, hex(unknownAlikeHex));
    QCOMPARE(previous->time, QTime(5, 0));
    monitorView.send(hex("29 68 01 02"), QTime(6, 0));
    QCOMPARE(previous->data, hex("29 68 01 02"));
    QCOMPARE(previous->time, QTime(6, 0));
    monitorView.send(hex("05 32 41 42 43"), QTime(7, 0));
    QCOMPARE(previous->data, hex("05 32 41 42 43"));
    QCOMPARE(previous->time, QTime(7, 0));
    QVERIFY(monitorView.view->previousPacket == previous);
}

void Duplicates::droppedReportLeavesThePreviousPacket()
{
    MonitorView monitorView;
    monitorView.send(hex(positionHex), noon);
    monitorView.send(hex(penIdentityAlikeHex), QTime(13, 0));
    QCOMPARE(monitorView.view->previousPacket->data, hex(positionHex));
    QCOMPARE(monitorView.view->previousPacket->time, noon);
}

// The intake deletes each packet once the view has seen it.
void Duplicates::previousPacketIsACopy()
{
    MonitorView monitorView;
    auto *packet = new _DataPacket{hex(positionHex), 31, 0x370f, 1001, noon};
    monitorView.view->Display(packet);
    QVERIFY(monitorView.view->previousPacket != packet);
    delete packet;
    QCOMPARE(monitorView.view->previousPacket->data, hex(positionHex));
}

PADSCOPE_TESTS(Duplicates);
#include "tst_duplicates.moc"
