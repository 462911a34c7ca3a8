#include "records.h"
#include "recordtext.h"
#include "support/datalines.h"
#include "support/tests.h"

class RecordTextTests : public QObject
{
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void namesOfReports();
    void lossesAreTold();
};

void RecordTextTests::lines_data()
{
    addColumns<QByteArray, QString>("packet", "line");
    for (const QStringList &parts : dataLines(TEST_FOLDER "/texts.txt", 8, 8))
        addRow(qPrintable(parts[0]),
               packetBytes(parts[1].toInt(), parts[2].toInt(), parts[3].toInt(), parts[4].toInt(),
                           parts[5].toInt(), QByteArray::fromHex(parts[6].toLatin1()), 9),
               parts[7]);
}

void RecordTextTests::lines()
{
    QFETCH(QByteArray, packet);
    const OwnRecord own(packet);
    QTEST(QString::fromStdString(decoding::boardOf(own.record) + "  " + decoding::textOf(own.record)),
          "line");
}

void RecordTextTests::namesOfReports()
{
    const auto nameOf = [](const char *payload) {
        const OwnRecord own(packetBytes(1, 1, 0, 7, 0, QByteArray::fromHex(payload)));
        return decoding::reportNameOf(own.record);
    };
    QCOMPARE(nameOf("0a2f04"), "SignalReport");
    QCOMPARE(nameOf("0877"), "TextReport");
    QCOMPARE(nameOf("34770c"), "AdcReport");
    QCOMPARE(nameOf("347734"), "TextReport");
    QVERIFY(!nameOf("0301"));
    QVERIFY(!decoding::reportNameOf(OwnRecord(packetBytes(2, 0, 1, 0, 0, {})).record));
}

void RecordTextTests::lossesAreTold()
{
    const OwnRecord own(packetBytes(2, 0, 1, 0, 0, {}, 0, 17));
    QCOMPARE(decoding::textOf(own.record), std::string("[17 lost] orvexAttach()"));
}

PADSCOPE_TESTS(RecordTextTests);
#include "tst_recordtext.moc"
