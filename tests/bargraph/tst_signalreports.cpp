#include <memory>

#include "bargraph/bargraphtest.h"
#include "bargraph/paintcounter.h"
#include "support/tests.h"

class TestSignalReports : public BarGraphTest
{
    Q_OBJECT

private slots:
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
};

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
    addColumns<int, int, int, bool>("length", "type", "subType", "taken");

    addRow("full", 40, 47, 1, true);
    addRow("full, one byte less", 39, 47, 1, false);
    addRow("full, one byte more", 41, 47, 1, false);
    addRow("full, sub-type 0", 40, 47, 0, false);
    addRow("full, sub-type 2", 40, 47, 2, false);
    addRow("full, type below", 40, 46, 1, false);
    addRow("full, type above", 40, 48, 1, false);
    addRow("phase report", 40, 104, 1, false);

    addRow("integrators, sub-type 4", 10, 47, 4, true);
    addRow("integrators, sub-type 0", 10, 47, 0, true);
    addRow("integrators, sub-type 255", 10, 47, 255, true);
    addRow("integrators, one byte less", 9, 47, 4, false);
    addRow("integrators, one byte more", 11, 47, 4, false);
    addRow("integrators, type below", 10, 46, 4, false);
    addRow("integrators, type above", 10, 48, 4, false);
    addRow("integrators, text or voltage", 10, 119, 4, false);

    addRow("normalised, sub-type 5", 16, 47, 5, true);
    addRow("normalised, sub-type 1", 16, 47, 1, true);
    addRow("normalised, one byte less", 15, 47, 5, false);
    addRow("normalised, one byte more", 17, 47, 5, false);
    addRow("normalised, type below", 16, 46, 5, false);
    addRow("normalised, type above", 16, 48, 5, false);

    addRow("quality of length 14", 14, 47, 3, false);
    addRow("counters of length 25", 25, 47, 6, false);
    addRow("signal of length 0", 0, 47, 1, false);
    addRow("signal of length 255", 255, 47, 1, false);

    addRow("voltage of length 52", 52, 119, 12, true);
    addRow("voltage of length 58", 58, 119, 12, true);
    addRow("voltage, sub-type 11", 52, 119, 11, true);
    addRow("voltage, sub-type 13", 58, 119, 13, true);
    addRow("voltage of length 51", 51, 119, 12, false);
    addRow("voltage of length 53", 53, 119, 12, false);
    addRow("voltage of length 57", 57, 119, 12, false);
    addRow("voltage of length 59", 59, 119, 12, false);
    addRow("voltage, type below", 52, 118, 12, false);
    addRow("voltage, type above", 58, 120, 12, false);
    addRow("signal of length 52", 52, 47, 12, false);

    addRow("text of another type", 40, 51, 1, false);
    addRow("pen identity", 16, 162, 5, false);
    addRow("dual pen", 10, 163, 4, false);
    addRow("position", 40, 164, 1, false);
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

    addRow("full", hex("28 2f 01 1111111111 1111 1111 11 1111 1111 1111 1111 1111 1111"
                       "1111 1111 1111 1111 1111 1111 1111 11"));
    addRow("integrators", hex("0a 2f 04 1111 1111 1111 11"));
    addRow("normalised", hex("10 2f 05 1111 1111 1111 11 1111 1111 1111"));
    addRow("voltage of length 52", hex("34 77 0c 11 11 11"));
    addRow("voltage of length 58", hex("3a 77 0c 11 11 11"));
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
    addColumns<QByteArray, int>("report", "expected");

    addRow("zero", hex("34 77 0c 00 00"), 0);
    addRow("low byte", hex("34 77 0c ff 00"), 255);
    addRow("one high bit", hex("34 77 0c 00 01"), 256);
    addRow("two high bits", hex("3a 77 0c 01 02"), 513);
    addRow("largest", hex("3a 77 0c ff 03"), 1023);
    addRow("bits above are nothing", hex("34 77 0c 00 fc"), 0);
    addRow("all bits", hex("34 77 0c ff ff"), 1023);
    addRow("only the header", hex("34 77"), 0);
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

PADSCOPE_TESTS(TestSignalReports);
#include "tst_signalreports.moc"
