#include <memory>

#include "bargraph/display.h"
#include "bargraph/paintcounter.h"
#include "support/testmain.h"

class TestSignalReports : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fullSignal();
    void fullSignalAtItsExtremes();
    void shortSignal();
    void normalisedSignal();
    void selection_data();
    void selection();
    void shortPackets_data();
    void shortPackets();
    void shortPacketsByTheByte();
    void voltage_data();
    void voltage();
    void extremesOfTheVoltage();
    void voltageLeavesTheControlsAlone();
    void meterStays();
    void missingProximity();

private:
    std::unique_ptr<qorvexgraph> window;
    bargraph *view = nullptr;
};

void TestSignalReports::init()
{
    window = std::make_unique<qorvexgraph>();
    view = window->barGraphView;
}

void TestSignalReports::cleanup()
{
    window.reset();
}

void TestSignalReports::fullSignal()
{
    display(view, fullReport());
    QCOMPARE(signalsOf(view), (QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    QCOMPARE(view->proxChar, 'O');
    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox: O"));
    QCOMPARE(view->frequencyRaw, qint16{16});
    QCOMPARE(view->frequency, qint64{900}); // 16 * 225 / 4
    QCOMPARE(view->freqSpin->value(), 900);
    QCOMPARE(view->spinFrequency, 900);
    QCOMPARE(view->reportWord8, 0x1234);
    QCOMPARE(view->reportWord10, 0x9678); // unsigned
    QCOMPARE(view->voltageRaw, -1);
}

void TestSignalReports::fullSignalAtItsExtremes()
{
    display(view, hex("28 2f 01 0000000000 ffff ffff 00"
                      "0080 ff7f ffff 0080 ff7f ffff 0080 ff7f ffff 0080 ff7f ffff 0000 00"));
    QCOMPARE(signalsOf(view), (QVector<int>{-32768, 32767, -1, -32768, 32767, -1, //
                                            -32768, 32767, -1, -32768, 32767, -1}));
    QCOMPARE(view->reportWord8, 65535);
    QCOMPARE(view->reportWord10, 65535);
}

void TestSignalReports::shortSignal()
{
    display(view, fullReport());
    display(view, hex("0a 2f 04 feff 6400 0080 77"));
    QCOMPARE(signalsOf(view), (QVector<int>{-2, 100, -32768, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    QCOMPARE(view->proxChar, 'O');
    QCOMPARE(view->frequency, qint64{900});
    QCOMPARE(view->reportWord8, 0x1234);
}

void TestSignalReports::normalisedSignal()
{
    display(view, fullReport());
    display(view, hex("10 2f 05 feff 6400 0080 77 9cff c800 ff7f"));
    QCOMPARE(signalsOf(view), (QVector<int>{-2, 100, -32768, 4, 5, 6, -100, 200, 32767, 10, 11, 12}));
    QCOMPARE(view->proxChar, 'O');
    QCOMPARE(view->frequency, qint64{900});
}

void TestSignalReports::selection_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("subType");
    QTest::addColumn<bool>("taken");

    QTest::newRow("full") << 40 << 47 << 1 << true;
    QTest::newRow("full, one byte less") << 39 << 47 << 1 << false;
    QTest::newRow("full, one byte more") << 41 << 47 << 1 << false;
    QTest::newRow("full, sub-type 0") << 40 << 47 << 0 << false;
    QTest::newRow("full, sub-type 2") << 40 << 47 << 2 << false;
    QTest::newRow("full, type below") << 40 << 46 << 1 << false;
    QTest::newRow("full, type above") << 40 << 48 << 1 << false;
    QTest::newRow("phase report") << 40 << 104 << 1 << false;

    QTest::newRow("integrators, sub-type 4") << 10 << 47 << 4 << true;
    QTest::newRow("integrators, sub-type 0") << 10 << 47 << 0 << true;
    QTest::newRow("integrators, sub-type 255") << 10 << 47 << 255 << true;
    QTest::newRow("integrators, one byte less") << 9 << 47 << 4 << false;
    QTest::newRow("integrators, one byte more") << 11 << 47 << 4 << false;
    QTest::newRow("integrators, type below") << 10 << 46 << 4 << false;
    QTest::newRow("integrators, type above") << 10 << 48 << 4 << false;
    QTest::newRow("integrators, text or voltage") << 10 << 119 << 4 << false;

    QTest::newRow("normalised, sub-type 5") << 16 << 47 << 5 << true;
    QTest::newRow("normalised, sub-type 1") << 16 << 47 << 1 << true;
    QTest::newRow("normalised, one byte less") << 15 << 47 << 5 << false;
    QTest::newRow("normalised, one byte more") << 17 << 47 << 5 << false;
    QTest::newRow("normalised, type below") << 16 << 46 << 5 << false;
    QTest::newRow("normalised, type above") << 16 << 48 << 5 << false;

    QTest::newRow("quality of length 14") << 14 << 47 << 3 << false;
    QTest::newRow("counters of length 25") << 25 << 47 << 6 << false;
    QTest::newRow("signal of length 0") << 0 << 47 << 1 << false;
    QTest::newRow("signal of length 255") << 255 << 47 << 1 << false;

    QTest::newRow("voltage of length 52") << 52 << 119 << 12 << true;
    QTest::newRow("voltage of length 58") << 58 << 119 << 12 << true;
    QTest::newRow("voltage, sub-type 11") << 52 << 119 << 11 << true;
    QTest::newRow("voltage, sub-type 13") << 58 << 119 << 13 << true;
    QTest::newRow("voltage of length 51") << 51 << 119 << 12 << false;
    QTest::newRow("voltage of length 53") << 53 << 119 << 12 << false;
    QTest::newRow("voltage of length 57") << 57 << 119 << 12 << false;
    QTest::newRow("voltage of length 59") << 59 << 119 << 12 << false;
    QTest::newRow("voltage, type below") << 52 << 118 << 12 << false;
    QTest::newRow("voltage, type above") << 58 << 120 << 12 << false;
    QTest::newRow("signal of length 52") << 52 << 47 << 12 << false;

    QTest::newRow("text of another type") << 40 << 51 << 1 << false;
    QTest::newRow("pen identity") << 16 << 162 << 5 << false;
    QTest::newRow("dual pen") << 10 << 163 << 4 << false;
    QTest::newRow("position") << 40 << 164 << 1 << false;
}

void TestSignalReports::selection()
{
    QFETCH(int, length);
    QFETCH(int, type);
    QFETCH(int, subType);
    QFETCH(bool, taken);
    PaintCounter paints(window.get());
    const QString before = stateOf(view);

    QByteArray report(64, '\x21');
    report[0] = static_cast<char>(length);
    report[1] = static_cast<char>(type);
    report[2] = static_cast<char>(subType);
    display(view, report);

    QCOMPARE(stateOf(view) != before, taken);
    QCOMPARE(paints.take(), taken ? 1 : 0);
}

void TestSignalReports::shortPackets_data()
{
    QTest::addColumn<QByteArray>("report");

    QTest::newRow("full") << hex("28 2f 01 1111111111 1111 1111 11 1111 1111 1111 1111 1111 1111"
                                 "1111 1111 1111 1111 1111 1111 1111 11");
    QTest::newRow("integrators") << hex("0a 2f 04 1111 1111 1111 11");
    QTest::newRow("normalised") << hex("10 2f 05 1111 1111 1111 11 1111 1111 1111");
    QTest::newRow("voltage of length 52") << hex("34 77 0c 11 11 11");
    QTest::newRow("voltage of length 58") << hex("3a 77 0c 11 11 11");
}

/// A byte that is missing reads as zero. The bytes lie in a block of their own size, so that a sanitizer sees
/// what is read behind them.
void TestSignalReports::shortPackets()
{
    QFETCH(QByteArray, report);
    for (int length = 0; length <= report.size(); ++length) {
        const auto block = std::make_unique<char[]>(static_cast<std::size_t>(length));
        std::copy_n(report.constData(), length, block.get());
        qorvexgraph cutWindow;
        display(cutWindow.barGraphView, QByteArray::fromRawData(block.get(), length));

        qorvexgraph paddedWindow;
        display(paddedWindow.barGraphView, report.left(length) + QByteArray(64, '\0'));
        QCOMPARE(stateOf(cutWindow.barGraphView), stateOf(paddedWindow.barGraphView));
    }
}

void TestSignalReports::shortPacketsByTheByte()
{
    display(view, hex("10 2f 05 0201 04"));
    QCOMPARE(signalsOf(view), (QVector<int>{0x0102, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    display(view, hex("0a 2f"));
    QCOMPARE(signalsOf(view), QVector<int>(12, 0));
    display(view, hex("28 2f 01 0000000000 3412 78"));
    QCOMPARE(view->reportWord8, 0x1234);
    QCOMPARE(view->reportWord10, 0x78);
    QCOMPARE(view->proxChar, 'O');
    // Without its sub-type it is no full report.
    display(view, hex("28 2f"));
    QCOMPARE(view->reportWord8, 0x1234);
}

void TestSignalReports::voltage_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<int>("expected");

    QTest::newRow("zero") << hex("34 77 0c 00 00") << 0;
    QTest::newRow("low byte") << hex("34 77 0c ff 00") << 255;
    QTest::newRow("one high bit") << hex("34 77 0c 00 01") << 256;
    QTest::newRow("two high bits") << hex("3a 77 0c 01 02") << 513;
    QTest::newRow("largest") << hex("3a 77 0c ff 03") << 1023;
    QTest::newRow("bits above are nothing") << hex("34 77 0c 00 fc") << 0;
    QTest::newRow("all bits") << hex("34 77 0c ff ff") << 1023;
    QTest::newRow("only the header") << hex("34 77") << 0;
}

void TestSignalReports::voltage()
{
    QFETCH(QByteArray, report);
    QFETCH(int, expected);
    display(view, report);
    QCOMPARE(view->voltageRaw, expected);
    QCOMPARE(view->voltageMin, expected);
    QCOMPARE(view->voltageMax, expected);
}

void TestSignalReports::extremesOfTheVoltage()
{
    const auto read = [this](const char *digits, int raw, int min, int max) {
        display(view, hex(digits));
        QCOMPARE(view->voltageRaw, raw);
        QCOMPARE(view->voltageMin, min);
        QCOMPARE(view->voltageMax, max);
    };
    read("34 77 0c f4 01", 500, 500, 500);
    read("34 77 0c 2c 01", 300, 300, 500);
    read("34 77 0c bc 02", 700, 300, 700);
    read("34 77 0c 00 02", 512, 300, 700);
    view->resetMinMaxVoltage();
    QCOMPARE(view->voltageRaw, 512);
    QCOMPARE(view->voltageMin, -1);
    QCOMPARE(view->voltageMax, -1);
    read("34 77 0c 00 00", 0, 0, 0);
    read("34 77 0c 90 01", 400, 0, 400);
}

void TestSignalReports::voltageLeavesTheControlsAlone()
{
    display(view, hex("34 77 0c f4 01"));
    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox:"));
    QCOMPARE(view->freqLabel->text(), QStringLiteral("Freq:"));
    QCOMPARE(view->freqSpin->value(), 0);
    QCOMPARE(view->spinFrequency, 0);
}

void TestSignalReports::meterStays()
{
    display(view, hex("34 77 0c f4 01"));
    display(view, fullReport());
    view->resetMinMaxVoltage();
    display(view, hex("0a 2f 04 feff 6400 0080 77"));
    QCOMPARE(view->voltageRaw, 500);
    QCOMPARE(view->channelSignals[0], qint16{-2});
}

void TestSignalReports::missingProximity()
{
    display(view, hex("0a 2f 04 feff 6400 0080 77"));
    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox: ") + QChar(0));
}

PADSCOPE_TEST_MAIN(TestSignalReports)
#include "tst_signalreports.moc"
