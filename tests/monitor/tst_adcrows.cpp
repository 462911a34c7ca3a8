#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

/// Which reports are voltage readings, and the rows that those make.
class AdcRows : public QObject
{
    Q_OBJECT

private slots:
    void voltage_data();
    void voltage();
    void neighbourIsText_data();
    void neighbourIsText();
};

void AdcRows::voltage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("length byte 52") << QByteArray("34 77 0c 64 00") << "Raw ADC: 100Voltage: 0.488V";
    QTest::newRow("length byte 58") << QByteArray("3a 77 0c 64 00") << "Raw ADC: 100Voltage: 0.488V";
    QTest::newRow("nothing") << QByteArray("3a 77 0c 00 00") << "Raw ADC: 0Voltage: 0V";
    QTest::newRow("smallest step") << QByteArray("3a 77 0c 01 00") << "Raw ADC: 1Voltage: 0.00488V";
    QTest::newRow("three digits are enough") << QByteArray("3a 77 0c fa 00") << "Raw ADC: 250Voltage: 1.22V";
    // 257 steps are 1.25416 V.
    QTest::newRow("rounded down to four digits")
        << QByteArray("3a 77 0c 01 01") << "Raw ADC: 257Voltage: 1.254V";
    // 256 steps are 1.24928 V.
    QTest::newRow("a digit above a byte") << QByteArray("3a 77 0c 00 01") << "Raw ADC: 256Voltage: 1.249V";
    // 770 steps are 3.7576 V.
    QTest::newRow("rounded up to four digits")
        << QByteArray("3a 77 0c 02 03") << "Raw ADC: 770Voltage: 3.758V";
    QTest::newRow("largest") << QByteArray("3a 77 0c ff 03") << "Raw ADC: 1023Voltage: 4.992V";
    QTest::newRow("high bits are ignored") << QByteArray("3a 77 0c ff ff") << "Raw ADC: 1023Voltage: 4.992V";
    QTest::newRow("bytes behind the reading")
        << QByteArray("3a 77 0c 64 00 41 42 0a") << "Raw ADC: 100Voltage: 0.488V";
    QTest::newRow("high byte missing") << QByteArray("3a 77 0c 64") << "Raw ADC: 100Voltage: 0.488V";
    QTest::newRow("both bytes missing") << QByteArray("3a 77 0c") << "Raw ADC: 0Voltage: 0V";
}

void AdcRows::voltage()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.rows(), QStringList{text});
    QCOMPARE(monitorView.label(), text);
    QCOMPARE(monitorView.view->pendingText, QString());
}

void AdcRows::neighbourIsText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("pendingText");
    QTest::newRow("length byte 51") << QByteArray("33 77 0c 64 41") << ".dA";
    QTest::newRow("length byte 53") << QByteArray("35 77 0c 64 41") << ".dA";
    QTest::newRow("length byte 57") << QByteArray("39 77 0c 64 41") << ".dA";
    QTest::newRow("length byte 59") << QByteArray("3b 77 0c 64 41") << ".dA";
    QTest::newRow("sub-type 11, length byte 52") << QByteArray("34 77 0b 64 41") << ".dA";
    QTest::newRow("sub-type 11, length byte 58") << QByteArray("3a 77 0b 64 41") << ".dA";
    QTest::newRow("sub-type 13, length byte 52") << QByteArray("34 77 0d 64 41") << ".dA";
    QTest::newRow("sub-type 13, length byte 58") << QByteArray("3a 77 0d 64 41") << ".dA";
    QTest::newRow("type 50") << QByteArray("3a 32 0c 64 41") << ".dA";
    QTest::newRow("no sub-type") << QByteArray("3a 77") << "";
}

void AdcRows::neighbourIsText()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, pendingText);
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.rows(), QStringList());
    QCOMPARE(monitorView.view->pendingText, pendingText);
}

PADSCOPE_TEST_MAIN(AdcRows)
#include "tst_adcrows.moc"
