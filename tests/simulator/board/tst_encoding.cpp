#include "encoding.h"
#include "oddreports.h"
#include "support/tests.h"

/// The bytes of each kind of report, written out by hand.
class tst_encoding : public QObject
{
    Q_OBJECT

private slots:
    void kinds_data();
    void kinds();
    void texts();
    void longTextsHaveTheLargestLengthByte();
    void unknownTypes();
};

namespace {

/// Values that show sign and byte order: 258 is 02 01 with the low byte first, -2 is FE FF.
Measurement sample()
{
    Measurement m;
    m.pen = {4660.0, 2345.0, 1.0, true, 1}; // x 1234h, y 0929h
    m.secondPen = {65538.0, 3.0, 0.5, false, 2};
    m.studentWrites = true;
    m.xFine = {258, -2, 3};
    m.yFine = {4, 5, -6};
    m.xCoarse = {772, -8, 9};
    m.yCoarse = {10, 11, -12};
    m.offset = {-1, 2, 513};
    m.qualityX = 900; // 84 03
    m.qualityY = 902; // 86 03
    m.quality = 901;  // 85 03
    m.minimumQuality = 20;
    m.maximumQuality = 999; // E7 03
    m.integrations = 66;
    m.frequencyRaw = 2000; // D0 07
    m.risesX = 70001;      // 71 11 01 00; its remainder of 1000 is 1
    m.risesY = 513;        // 01 02 00 00
    m.adcRaw = 1023;
    m.proximity = 'O';
    return m;
}

} // namespace

void tst_encoding::kinds_data()
{
    addColumns<int, QByteArray>("kind", "expected");
    const auto row = [](const char *name, Kind kind, const char *hex) {
        addRow(name, static_cast<int>(kind), QByteArray::fromHex(hex));
    };
    row("signal 1", Kind::Signal1,
        "28 2f 01 00 00 00 00 00  71 11 01 02 00"
        "02 01 fe ff 03 00  04 00 05 00 fa ff  04 03 f8 ff 09 00  0a 00 0b 00 f4 ff  d0 07 00");
    // The raw outputs are four times the normalised ones: 1032, -8, 12.
    row("signal 2", Kind::Signal2,
        "28 2f 02 00 00 00 00 00 00 00 00 00 00"
        "08 04 f8 ff 0c 00 00 42 00 02 01 fe ff 03 00 00 00 00 00 00 00 00 00 00 00 00 00");
    row("signal 3", Kind::Signal3, "0e 2f 03 01 02 00 85 03 00 14 00 00 e7 03");
    row("signal 4", Kind::Signal4, "0a 2f 04 02 01 fe ff 03 00 42");
    row("signal 5", Kind::Signal5, "10 2f 05 02 01 fe ff 03 00 42 04 03 f8 ff 09 00");
    row("signal 6", Kind::Signal6,
        "19 2f 06 84 03 86 03 85 03 14 00 e7 03 01 00 71 11 01 00 01 02 01 02 00 00");
    row("phase", Kind::Phase,
        "28 68 01 02 ff fe 00 03  03 04 ff f8 00 09  00 04 00 05 ff fa  00 0a 00 0b ff f4"
        "42 43 21 22  84 03 86 03  ff ff 02 00 01 02");
    row("pen identity", Kind::PenIdentity, "09 a2 00 01 00 85 03 01 00");
    row("two pens", Kind::DualPen,
        "1a a3 01 00  34 12 00 00 29 09 00 00 81 00  00 00  02 00 01 00 03 00 00 00 02 00");
    // 4660 is 660 (0294h) in the fifth period of 1000, 2345 is 345 (0159h) in the third.
    row("position", Kind::Position,
        "1f a4 00 85 03 64 00 34 12 00 00 29 09 00 00 94 02 59 01 04 00 02 00 ff 00 00 00 ff 00 00 00");
    row("voltage", Kind::Adc,
        "34 77 0c ff 03 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
}

void tst_encoding::kinds()
{
    QFETCH(int, kind);
    const Report report = encode(static_cast<Kind>(kind), sample());
    const QByteArray bytes(reinterpret_cast<const char *>(report.data()), static_cast<int>(report.size()));
    QFETCH(QByteArray, expected);
    QCOMPARE(bytes.toHex(), expected.toHex());
}

void tst_encoding::texts()
{
    QCOMPARE(textReport(reports::TextReport, "Hi\n"), (Report{5, 50, 'H', 'i', 10}));
    QCOMPARE(textReport(reports::TextOrAdcReport, "!"), (Report{3, 119, '!'}));
    QCOMPARE(textReport(reports::TextReport, ""), (Report{2, 50}));
}

void tst_encoding::longTextsHaveTheLargestLengthByte()
{
    const Report report = textReport(reports::TextReport, std::string(300, 'x'));
    QCOMPARE(report.size(), std::size_t{302});
    QCOMPARE(static_cast<int>(report.front()), 255);
}

void tst_encoding::unknownTypes()
{
    OddReports odd(1);
    for (int i = 0; i < 1000; ++i) {
        const Report report = odd.unknown();
        QVERIFY(report.size() >= 6 && report.size() <= 20);
        QCOMPARE(static_cast<std::size_t>(report[0]), report.size());
        QVERIFY2(report[1] == 33 || report[1] == 65 || report[1] == 200, QByteArray::number(report[1]));
    }
}

PADSCOPE_TESTS(tst_encoding);
#include "tst_encoding.moc"
