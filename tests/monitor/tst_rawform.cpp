#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

/// Bytes shown as characters and in hexadecimal.
class RawForm : public QObject
{
    Q_OBJECT

private slots:
    void bytes_data();
    void bytes();
    void noBytes();
    void onlySoManyAsSaid();
};

void RawForm::bytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("printable");
    QTest::addColumn<QString>("row");
    QTest::newRow("three bytes") << QByteArray::fromHex("41 42 0d") << "AB."
                                 << "AB.   41 42 0d ";
    QTest::newRow("one byte") << QByteArray::fromHex("20") << " "
                              << "    20 ";
    QTest::newRow("the printable ones and their neighbours") << QByteArray::fromHex("1f 20 7e 7f") << ". ~."
                                                             << ". ~.   1f 20 7e 7f ";
    QTest::newRow("bytes above 0x7e") << QByteArray::fromHex("7f 80 a0 e4 ff") << "....."
                                      << ".....   7f 80 a0 e4 ff ";
    QTest::newRow("nine bytes make the first group")
        << QByteArray::fromHex("000102030405060708") << "........."
        << ".........   00 01 02 03 04 05 06 07 08  ";
    QTest::newRow("eight bytes do not") << QByteArray::fromHex("0001020304050607") << "........"
                                        << "........   00 01 02 03 04 05 06 07 ";
    QTest::newRow("ten bytes") << QByteArray::fromHex("00010203040506070809") << ".........."
                               << "..........   00 01 02 03 04 05 06 07 08  09 ";
    QTest::newRow("seventeen bytes")
        << QByteArray::fromHex("000102030405060708090a0b0c0d0e0f10") << "................."
        << ".................   00 01 02 03 04 05 06 07 08  09 0a 0b 0c 0d 0e 0f 10  ";
    QTest::newRow("eighteen bytes")
        << QByteArray::fromHex("000102030405060708090a0b0c0d0e0f1011") << ".................."
        << "..................   00 01 02 03 04 05 06 07 08  09 0a 0b 0c 0d 0e 0f 10  11 ";
    QByteArray everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    const QString everyCharacter =
        QString(32, '.') +
        " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~" +
        QString(129, '.');
    QTest::newRow("every byte") << everyByte << everyCharacter
                                << everyCharacter + "   "
                                                    "00 01 02 03 04 05 06 07 08  "
                                                    "09 0a 0b 0c 0d 0e 0f 10  "
                                                    "11 12 13 14 15 16 17 18  "
                                                    "19 1a 1b 1c 1d 1e 1f 20  "
                                                    "21 22 23 24 25 26 27 28  "
                                                    "29 2a 2b 2c 2d 2e 2f 30  "
                                                    "31 32 33 34 35 36 37 38  "
                                                    "39 3a 3b 3c 3d 3e 3f 40  "
                                                    "41 42 43 44 45 46 47 48  "
                                                    "49 4a 4b 4c 4d 4e 4f 50  "
                                                    "51 52 53 54 55 56 57 58  "
                                                    "59 5a 5b 5c 5d 5e 5f 60  "
                                                    "61 62 63 64 65 66 67 68  "
                                                    "69 6a 6b 6c 6d 6e 6f 70  "
                                                    "71 72 73 74 75 76 77 78  "
                                                    "79 7a 7b 7c 7d 7e 7f 80  "
                                                    "81 82 83 84 85 86 87 88  "
                                                    "89 8a 8b 8c 8d 8e 8f 90  "
                                                    "91 92 93 94 95 96 97 98  "
                                                    "99 9a 9b 9c 9d 9e 9f a0  "
                                                    "a1 a2 a3 a4 a5 a6 a7 a8  "
                                                    "a9 aa ab ac ad ae af b0  "
                                                    "b1 b2 b3 b4 b5 b6 b7 b8  "
                                                    "b9 ba bb bc bd be bf c0  "
                                                    "c1 c2 c3 c4 c5 c6 c7 c8  "
                                                    "c9 ca cb cc cd ce cf d0  "
                                                    "d1 d2 d3 d4 d5 d6 d7 d8  "
                                                    "d9 da db dc dd de df e0  "
                                                    "e1 e2 e3 e4 e5 e6 e7 e8  "
                                                    "e9 ea eb ec ed ee ef f0  "
                                                    "f1 f2 f3 f4 f5 f6 f7 f8  "
                                                    "f9 fa fb fc fd fe ff ";
}

void RawForm::bytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, printable);
    QFETCH(QString, row);
    MonitorView monitorView;
    monitorView.view->AddData(reinterpret_cast<const unsigned char *>(bytes.constData()),
                              static_cast<unsigned int>(bytes.size()));
    QCOMPARE(monitorView.rows(), QStringList{row});
    QCOMPARE(monitorView.label(), printable);
}

void RawForm::noBytes()
{
    MonitorView monitorView;
    monitorView.view->AddData(static_cast<const unsigned char *>(nullptr), 0);
    QCOMPARE(monitorView.rows(), QStringList{""});
    QCOMPARE(monitorView.label(), QString());
}

void RawForm::onlySoManyAsSaid()
{
    MonitorView monitorView;
    const unsigned char bytes[] = {0x41, 0x42, 0x43};
    monitorView.view->AddData(bytes, 2);
    QCOMPARE(monitorView.rows(), QStringList{"AB   41 42 "});
}

PADSCOPE_TEST_MAIN(RawForm)
#include "tst_rawform.moc"
