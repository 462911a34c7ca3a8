#include "monitor/monitortest.h"
#include "support/datalines.h"

/// Which reports are dropped because the one before them had the same checksum.
class Duplicates : public MonitorTest
{
    Q_OBJECT

private slots:
    void reports_data();
    void reports();
    void onlyTheChecksumCounts();
    void dummyBeforeTheFirstPacket();
    void previousPacketIsTheLastShown();
    void droppedReportLeavesThePreviousPacket();
};

void Duplicates::reports_data()
{
    addColumns<QStringList, QString>("reports", "added");
    for (const QStringList &line : dataLines(TEST_FOLDER "/duplicates.txt", 3, 5))
        addRow(qPrintable(line[0]), QStringList(line.mid(2)), line[1]);
}

void Duplicates::reports()
{
    QFETCH(QStringList, reports);
    QString added;
    for (const QString &report : qAsConst(reports)) {
        const int before = model->rowCount() + pendingText().size();
        send(hex(report.toLatin1()));
        added += QString::number(model->rowCount() + pendingText().size() - before);
    }
    QTEST(added, "added");
}

// The packet's own checksum is what is compared, not one made of its bytes.
void Duplicates::onlyTheChecksumCounts()
{
    _DataPacket first{hex("09 a2 00 0100 0200 0300"), 9, 7, 1001, noon};
    _DataPacket otherBytes{hex("0a 2f 04 0100 0200 0300 04"), 10, 7, 1002, QTime(12, 1)};
    _DataPacket otherChecksum{hex("09 a2 00 0100 0200 0300"), 9, 8, 1001, noon};
    view->Display(&first);
    view->Display(&otherBytes);
    QCOMPARE(rows().size(), 1);
    view->Display(&otherChecksum);
    QCOMPARE(rows(), (QStringList{"Q:              2     Button:            3 Pen:        Student",
                                  "Q:              2     Button:            3 Pen:        Student"}));
}

void Duplicates::dummyBeforeTheFirstPacket()
{
    QVERIFY(!previousPacket());
    send(hex("0a 2f 04 21 1b"));
    QCOMPARE(previousPacket()->data, QByteArray("HH"));
    QCOMPARE(previousPacket()->length, quint32{2});
    QCOMPARE(previousPacket()->checksum, quint32{0x49ad});
    QCOMPARE(previousPacket()->device, 0);
    QVERIFY(previousPacket()->time.isValid());
}

void Duplicates::previousPacketIsTheLastShown()
{
    _DataPacket packet{hex("0a 2f 04 0100 0200 0300 04"), 10, 12345, 77, QTime(1, 2, 3, 4)};
    view->Display(&packet);
    const _DataPacket *previous = previousPacket();
    QVERIFY(previous != &packet);
    QCOMPARE(previous->data, hex("0a 2f 04 0100 0200 0300 04"));
    QCOMPARE(previous->length, quint32{10});
    QCOMPARE(previous->checksum, quint32{12345});
    QCOMPARE(previous->device, 77);
    QCOMPARE(previous->time, QTime(1, 2, 3, 4));

    // Of an unknown type, with a wrong length byte, and text.
    int hour = 5;
    for (const char *report : {"05 21 41 e0 0f", "29 68 01 02", "05 32 41 42 43"}) {
        send(hex(report), QTime(++hour, 0));
        QCOMPARE(previous->data, hex(report));
        QCOMPARE(previous->time, QTime(hour, 0));
    }
    QCOMPARE(previousPacket(), previous);
}

void Duplicates::droppedReportLeavesThePreviousPacket()
{
    send(hex("05 21 41 e0 0f"), noon);
    send(hex("09 a2 00 0100 f8ff 217d"), QTime(13, 0));
    QCOMPARE(previousPacket()->data, hex("05 21 41 e0 0f"));
    QCOMPARE(previousPacket()->time, noon);
}

PADSCOPE_TESTS(Duplicates);
#include "tst_duplicates.moc"
