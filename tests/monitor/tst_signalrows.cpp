#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

/// The rows that SignalReports make, blank by blank. Bytes that are not read hold 0xee.
class SignalRows : public QObject
{
    Q_OBJECT

private slots:
    void fineAndCoarse_data();
    void fineAndCoarse() { checkRow(); }
    void rawAndNormalised_data();
    void rawAndNormalised() { checkRow(); }
    void qualitySummary_data();
    void qualitySummary() { checkRow(); }
    void integrators_data();
    void integrators() { checkRow(); }
    void integratorsAndNormalised_data();
    void integratorsAndNormalised() { checkRow(); }
    void qualityAndCounters_data();
    void qualityAndCounters() { checkRow(); }

private:
    static void addColumns();
    static void checkRow();
};

void SignalRows::addColumns()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
}

void SignalRows::checkRow()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    MonitorView monitorView;
    monitorView.send(QByteArray::fromHex(bytes));
    QCOMPARE(monitorView.rows(), QStringList{text});
    QCOMPARE(monitorView.label(), text);
}

void SignalRows::fineAndCoarse_data()
{
    addColumns();
    QTest::newRow("ordinary values")
        << QByteArray("28 2f 01 eeeeeeeeeeeeeeeeeeee 0300 d1ff 0001 e803 0c00 fbff 4d00 0f27 d4fe "
                      "1027 0400 5800 2efb ee")
        << "X Fine 0:     3   60:   -47   120:   256 / Y Fine  0:  1000   60    12   120:    -5 / "
           "X Crse 0:    77   60:  9999   120:  -300 / Y Crse  0: 10000   60     4   120:    88 / "
           "Freq -1234";
    QTest::newRow("negative values")
        << QByteArray("28 2f 01 eeeeeeeeeeeeeeeeeeee ffff f8ff e3ff c0ff 8fff 50ff 03ff a8fe 3ffe "
                      "c8fd 43fd b0fc 0ffc ee")
        << "X Fine 0:    -1   60:    -8   120:   -29 / Y Fine  0:   -64   60  -113   120:  -176 / "
           "X Crse 0:  -253   60:  -344   120:  -449 / Y Crse  0:  -568   60  -701   120:  -848 / "
           "Freq -1009";
    QTest::newRow("largest values")
        << QByteArray("28 2f 01 eeeeeeeeeeeeeeeeeeee ff7f ff7f ff7f ff7f ff7f ff7f ff7f ff7f ff7f "
                      "ff7f ff7f ff7f ff7f ee")
        << "X Fine 0: 32767   60: 32767   120: 32767 / Y Fine  0: 32767   60 32767   120: 32767 / "
           "X Crse 0: 32767   60: 32767   120: 32767 / Y Crse  0: 32767   60 32767   120: 32767 / "
           "Freq 32767";
    QTest::newRow("smallest values")
        << QByteArray("28 2f 01 eeeeeeeeeeeeeeeeeeee 0080 0080 0080 0080 0080 0080 0080 0080 0080 "
                      "0080 0080 0080 0080 ee")
        << "X Fine 0: -32768   60: -32768   120: -32768 / Y Fine  0: -32768   60 -32768   120: "
           "-32768 / X Crse 0: -32768   60: -32768   120: -32768 / Y Crse  0: -32768   60 "
           "-32768   120: -32768 / Freq -32768";
    QTest::newRow("every bit set")
        << QByteArray("28 2f 01 ffffffffffffffffffff ffff ffff ffff ffff ffff ffff ffff ffff ffff "
                      "ffff ffff ffff ffff ff")
        << "X Fine 0:    -1   60:    -1   120:    -1 / Y Fine  0:    -1   60    -1   120:    -1 / "
           "X Crse 0:    -1   60:    -1   120:    -1 / Y Crse  0:    -1   60    -1   120:    -1 / "
           "Freq    -1";
}

void SignalRows::rawAndNormalised_data()
{
    addColumns();
    QTest::newRow("ordinary values")
        << QByteArray("28 2f 02 eeeeeeeeeeeeeeeeeeee 0300 d1ff 0001 ee 09 ee 0c00 fbff 4d00 "
                      "eeeeeeeeeeeeeeeeeeeeeeee")
        << "Raw 0:     3   60:   -47   120:   256 / Integs:   9/ Norm 0:    12   60    -5   "
           "120:    77";
    QTest::newRow("negative values")
        << QByteArray("28 2f 02 eeeeeeeeeeeeeeeeeeee ffff f8ff e3ff ee 04 ee 8fff 50ff 03ff "
                      "eeeeeeeeeeeeeeeeeeeeeeee")
        << "Raw 0:    -1   60:    -8   120:   -29 / Integs:   4/ Norm 0:  -113   60  -176   120:  "
           "-253";
    QTest::newRow("largest values")
        << QByteArray("28 2f 02 eeeeeeeeeeeeeeeeeeee ff7f ff7f ff7f ee ff ee ff7f ff7f ff7f "
                      "eeeeeeeeeeeeeeeeeeeeeeee")
        << "Raw 0: 32767   60: 32767   120: 32767 / Integs: 255/ Norm 0: 32767   60 32767   120: "
           "32767";
    QTest::newRow("smallest values")
        << QByteArray("28 2f 02 eeeeeeeeeeeeeeeeeeee 0080 0080 0080 ee 00 ee 0080 0080 0080 "
                      "eeeeeeeeeeeeeeeeeeeeeeee")
        << "Raw 0: -32768   60: -32768   120: -32768 / Integs:   0/ Norm 0: -32768   60 -32768   "
           "120: -32768";
    QTest::newRow("every bit set")
        << QByteArray("28 2f 02 ffffffffffffffffffff ffff ffff ffff ff ff ff ffff ffff ffff "
                      "ffffffffffffffffffffffff")
        << "Raw 0:    -1   60:    -1   120:    -1 / Integs: 255/ Norm 0:    -1   60    -1   "
           "120:    -1";
}

void SignalRows::qualitySummary_data()
{
    addColumns();
    QTest::newRow("ordinary values") << QByteArray("0e 2f 03 03 2f ee 0001 ee e803 ee 0c00")
                                     << "Q: Flag  3 Pass 47 AvQ   256 MinQ  1000 MaxQ    12";
    QTest::newRow("negative values") << QByteArray("0e 2f 03 01 02 ee e3ff ee c0ff ee 8fff")
                                     << "Q: Flag  1 Pass  2 AvQ   -29 MinQ   -64 MaxQ  -113";
    QTest::newRow("largest values") << QByteArray("0e 2f 03 ff ff ee ff7f ee ff7f ee ff7f")
                                    << "Q: Flag 255 Pass 255 AvQ 32767 MinQ 32767 MaxQ 32767";
    QTest::newRow("smallest values") << QByteArray("0e 2f 03 00 00 ee 0080 ee 0080 ee 0080")
                                     << "Q: Flag  0 Pass  0 AvQ -32768 MinQ -32768 MaxQ -32768";
    QTest::newRow("every bit set") << QByteArray("0e 2f 03 ff ff ff ffff ff ffff ff ffff")
                                   << "Q: Flag 255 Pass 255 AvQ    -1 MinQ    -1 MaxQ    -1";
}

void SignalRows::integrators_data()
{
    addColumns();
    QTest::newRow("ordinary values") << QByteArray("0a 2f 04 0300 d1ff 0001 09")
                                     << "0:     3  60:   -47  120:   256  Integs:   9";
    QTest::newRow("negative values") << QByteArray("0a 2f 04 ffff f8ff e3ff 04")
                                     << "0:    -1  60:    -8  120:   -29  Integs:   4";
    QTest::newRow("largest values") << QByteArray("0a 2f 04 ff7f ff7f ff7f ff")
                                    << "0: 32767  60: 32767  120: 32767  Integs: 255";
    QTest::newRow("smallest values") << QByteArray("0a 2f 04 0080 0080 0080 00")
                                     << "0: -32768  60: -32768  120: -32768  Integs:   0";
    QTest::newRow("every bit set") << QByteArray("0a 2f 04 ffff ffff ffff ff")
                                   << "0:    -1  60:    -1  120:    -1  Integs: 255";
}

void SignalRows::integratorsAndNormalised_data()
{
    addColumns();
    QTest::newRow("ordinary values")
        << QByteArray("10 2f 05 0300 d1ff 0001 09 0c00 fbff 4d00")
        << "0:     3  60:   -47  120:   256  Integs:   9 / Norm 0:    12  60:    -5  120:    77";
    QTest::newRow("negative values")
        << QByteArray("10 2f 05 ffff f8ff e3ff 04 8fff 50ff 03ff")
        << "0:    -1  60:    -8  120:   -29  Integs:   4 / Norm 0:  -113  60:  -176  120:  -253";
    QTest::newRow("largest values")
        << QByteArray("10 2f 05 ff7f ff7f ff7f ff ff7f ff7f ff7f")
        << "0: 32767  60: 32767  120: 32767  Integs: 255 / Norm 0: 32767  60: 32767  120: 32767";
    QTest::newRow("smallest values")
        << QByteArray("10 2f 05 0080 0080 0080 00 0080 0080 0080")
        << "0: -32768  60: -32768  120: -32768  Integs:   0 / Norm 0: -32768  60: -32768  120: "
           "-32768";
    QTest::newRow("every bit set")
        << QByteArray("10 2f 05 ffff ffff ffff ff ffff ffff ffff")
        << "0:    -1  60:    -1  120:    -1  Integs: 255 / Norm 0:    -1  60:    -1  120:    -1";
}

void SignalRows::qualityAndCounters_data()
{
    addColumns();
    QTest::newRow("ordinary values")
        << QByteArray("19 2f 06 0300 d1ff 0001 e803 0c00 0500 ad130500 0f27 acc71300")
        << "Q: X     3 Y   -47 Avg   256 Min  1000 Max    12, Rise/Full X     5 /     332717   Y  "
           "9999 /    1296300";
    QTest::newRow("negative values")
        << QByteArray("19 2f 06 ffff f8ff e3ff c0ff 8fff 0600 07000000 0800 09000000")
        << "Q: X    -1 Y    -8 Avg   -29 Min   -64 Max  -113, Rise/Full X     6 /          7   "
           "Y     8 /          9";
    QTest::newRow("largest values")
        << QByteArray("19 2f 06 ff7f ff7f ff7f ff7f ff7f ffff ffffffff ffff ffffffff")
        << "Q: X 32767 Y 32767 Avg 32767 Min 32767 Max 32767, Rise/Full X 65535 / 4294967295   Y "
           "65535 / 4294967295";
    QTest::newRow("smallest values")
        << QByteArray("19 2f 06 0080 0080 0080 0080 0080 0000 00000000 0000 00000000")
        << "Q: X -32768 Y -32768 Avg -32768 Min -32768 Max -32768, Rise/Full X     0 /          "
           "0   Y     0 /          0";
    QTest::newRow("every bit set")
        << QByteArray("19 2f 06 ffff ffff ffff ffff ffff ffff ffffffff ffff ffffffff")
        << "Q: X    -1 Y    -1 Avg    -1 Min    -1 Max    -1, Rise/Full X 65535 / 4294967295   Y "
           "65535 / 4294967295";
}

PADSCOPE_TEST_MAIN(SignalRows)
#include "tst_signalrows.moc"
