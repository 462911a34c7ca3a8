#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

/// Reports that are not decoded: sub-types without fields, wrong length bytes and unknown types.
class RawRows : public QObject
{
    Q_OBJECT

private slots:
    void subTypeWithoutFieldsMakesAnEmptyRow_data();
    void subTypeWithoutFieldsMakesAnEmptyRow();
    void signalLengthByte_data();
    void signalLengthByte();
    void phaseLengthByte_data();
    void phaseLengthByte();
    void unknownType_data();
    void unknownType();
    void neverMoreThanThePacketHolds();

private:
    static void checkRow();
};

void RawRows::subTypeWithoutFieldsMakesAnEmptyRow_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("sub-type 0") << QByteArray("0a 2f 00 0100 0200 0300 04");
    QTest::newRow("sub-type 7") << QByteArray("0a 2f 07 0100 0200 0300 04");
    QTest::newRow("sub-type 9") << QByteArray("28 2f 09 0100 0200 0300 04");
    QTest::newRow("sub-type 255") << QByteArray("0a 2f ff 0100 0200 0300 04");
}

void RawRows::subTypeWithoutFieldsMakesAnEmptyRow()
{
    QFETCH(QByteArray, bytes);
    MonitorView monitorView;
    monitorView.view->AddData("row before", "");
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.rows(), (QStringList{"row before", ""}));
    QCOMPARE(monitorView.label(), QString());
}

void RawRows::signalLengthByte_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << QByteArray("00 2f 04 3000 3100 3200 33")
                       << "./.0.1.2.3   00 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("9") << QByteArray("09 2f 04 3000 3100 3200 33")
                       << "./.0.1.2.3   09 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("10") << QByteArray("0a 2f 04 3000 3100 3200 33")
                        << "0:    48  60:    49  120:    50  Integs:  51";
    QTest::newRow("11") << QByteArray("0b 2f 04 3000 3100 3200 33")
                        << "./.0.1.2.3   0b 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("12") << QByteArray("0c 2f 04 3000 3100 3200 33")
                        << "./.0.1.2.3   0c 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("13") << QByteArray("0d 2f 04 3000 3100 3200 33")
                        << "./.0.1.2.3   0d 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("14") << QByteArray("0e 2f 04 3000 3100 3200 33")
                        << "0:    48  60:    49  120:    50  Integs:  51";
    QTest::newRow("15") << QByteArray("0f 2f 04 3000 3100 3200 33")
                        << "./.0.1.2.3   0f 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("16") << QByteArray("10 2f 04 3000 3100 3200 33")
                        << "0:    48  60:    49  120:    50  Integs:  51";
    QTest::newRow("24") << QByteArray("18 2f 04 3000 3100 3200 33")
                        << "./.0.1.2.3   18 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("25") << QByteArray("19 2f 04 3000 3100 3200 33")
                        << "0:    48  60:    49  120:    50  Integs:  51";
    QTest::newRow("26") << QByteArray("1a 2f 04 3000 3100 3200 33")
                        << "./.0.1.2.3   1a 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("39") << QByteArray("27 2f 04 3000 3100 3200 33")
                        << "'/.0.1.2.3   27 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("40") << QByteArray("28 2f 04 3000 3100 3200 33")
                        << "0:    48  60:    49  120:    50  Integs:  51";
    QTest::newRow("41") << QByteArray("29 2f 04 3000 3100 3200 33")
                        << ")/.0.1.2.3   29 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("255") << QByteArray("ff 2f 04 3000 3100 3200 33")
                         << "./.0.1.2.3   ff 2f 04 30 00 31 00 32 00  33 ";
    QTest::newRow("wrong, and a sub-type without fields")
        << QByteArray("0c 2f 09 41") << "./.A   0c 2f 09 41 ";
}

void RawRows::signalLengthByte()
{
    checkRow();
}

void RawRows::phaseLengthByte_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QString decoded =
        "X Rs 0:     1  60:     0  120:     0 X Full 0:     0  60:     0  120:     0  Y Rs 0:     0  "
        "60:     0  120:     0 Y Full 0:     0  60:     0  120:     0     X Rs Num:   0  Y Rs Num:   0   "
        "X Fn Num   0 Y Fn Num   0   X Q:     0 Y Q:     0   DC Offsets: 0:     0  60:     0  120     0";
    QTest::newRow("40") << QByteArray("28 68 00 01") << decoded;
    QTest::newRow("39") << QByteArray("27 68 00 01") << "'h..   27 68 00 01 ";
    QTest::newRow("41") << QByteArray("29 68 00 01") << ")h..   29 68 00 01 ";
    QTest::newRow("0") << QByteArray("00 68 00 01") << ".h..   00 68 00 01 ";
    QTest::newRow("255") << QByteArray("ff 68 00 01") << ".h..   ff 68 00 01 ";
    QTest::newRow("10") << QByteArray("0a 68 00 01") << ".h..   0a 68 00 01 ";
}

void RawRows::phaseLengthByte()
{
    checkRow();
}

void RawRows::unknownType_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << QByteArray("28 00 0c 41") << "(..A   28 00 0c 41 ";
    QTest::newRow("46") << QByteArray("28 2e 0c 41") << "(..A   28 2e 0c 41 ";
    QTest::newRow("48") << QByteArray("28 30 0c 41") << "(0.A   28 30 0c 41 ";
    QTest::newRow("49") << QByteArray("28 31 0c 41") << "(1.A   28 31 0c 41 ";
    QTest::newRow("51") << QByteArray("28 33 0c 41") << "(3.A   28 33 0c 41 ";
    QTest::newRow("103") << QByteArray("28 67 0c 41") << "(g.A   28 67 0c 41 ";
    QTest::newRow("105") << QByteArray("28 69 0c 41") << "(i.A   28 69 0c 41 ";
    QTest::newRow("118") << QByteArray("28 76 0c 41") << "(v.A   28 76 0c 41 ";
    QTest::newRow("120") << QByteArray("28 78 0c 41") << "(x.A   28 78 0c 41 ";
    QTest::newRow("161") << QByteArray("28 a1 0c 41") << "(..A   28 a1 0c 41 ";
    QTest::newRow("165") << QByteArray("28 a5 0c 41") << "(..A   28 a5 0c 41 ";
    QTest::newRow("255") << QByteArray("28 ff 0c 41") << "(..A   28 ff 0c 41 ";
}

void RawRows::unknownType()
{
    checkRow();
}

// The driver library's length may be longer than the bytes that were kept of the report.
void RawRows::neverMoreThanThePacketHolds()
{
    MonitorView monitorView;
    _DataPacket packet{QByteArray("A!B"), 400, 0, 1001, QTime(12, 0)};
    monitorView.view->Display(&packet);
    QCOMPARE(monitorView.rows(), QStringList{"A!B   41 21 42 "});
}

void RawRows::checkRow()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.rows(), QStringList{text});
}

PADSCOPE_TEST_MAIN(RawRows)
#include "tst_rawrows.moc"
