#include <set>

#include "encoding.h"
#include "oddreports.h"
#include "support/datalines.h"
#include "support/tests.h"

/// The bytes of each kind of report, and the texts, written out by hand.
class tst_encoding : public QObject
{
    Q_OBJECT

private slots:
    void kinds_data();
    void kinds();
    void texts();
    void longTextsHaveTheLargestLengthByte();
    void unknownTypes();
    void garbageOfEveryLength();
    void allTypesInTurn();
    void oddTexts();
    void signalLineByHand();
    void plainLinesNeverHave74Characters();
    void statusTextsAreShorterThanAVoltage();
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
    for (const QStringList &line : dataLines(TEST_FOLDER "/reports.txt", 3, 3))
        addRow(qPrintable(line[0]), line[1].toInt(), QByteArray::fromHex(line[2].toLatin1()));
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

void tst_encoding::garbageOfEveryLength()
{
    OddReports odd(1);
    std::set<int> values;
    for (std::size_t i = 0; i < 130; ++i) {
        const Report report = odd.next(Kind::Garbage);
        QCOMPARE(report.size(), i % 65);
        values.insert(report.begin(), report.end());
    }
    QVERIFY(values.size() > 250);
}

void tst_encoding::allTypesInTurn()
{
    OddReports odd(1);
    for (int type = 0; type < 300; ++type)
        QCOMPARE(static_cast<int>(odd.next(Kind::AllTypes).at(1)), type % 256);
}

void tst_encoding::oddTexts()
{
    OddReports odd(1);
    const auto next = [&odd](Kind kind) {
        const Report report = odd.next(kind);
        return report.at(1) == 50 ? std::string(report.begin() + 2, report.end()) : "";
    };
    for (int i = 0; i < 100; ++i) {
        const std::string endless = next(Kind::EndlessText);
        QVERIFY(!endless.empty());
        QCOMPARE(endless.find_first_of("!\n"), std::string::npos);
    }
    const std::string line = next(Kind::LongText);
    QCOMPARE(line.size(), std::size_t{10000});
    QCOMPARE(line.find('\n'), std::size_t{9999});
    QVERIFY(next(Kind::MarkupText).find("<b>bold</b>") == 0);
    const std::string all = next(Kind::EveryByteText);
    QCOMPARE(std::set<char>(all.begin(), all.end()).size(), std::size_t{256});
}

void tst_encoding::signalLineByHand()
{
    // 3000 is 0BB8h, 1500 is 05DCh and -1500 FA24h; 3500 is 0DACh and -3500 F254h; 2000 is 07D0h.
    Measurement m;
    m.xFine = {3000, 1500, -1500};
    m.yFine = {0, 1, -1};
    m.xCoarse = {3500, -3500, 255};
    m.yCoarse = {16, 32, -32768};
    m.proximity = 'N';
    m.frequencyRaw = 2000;
    const std::string line = signalLine(m);
    QCOMPARE(line,
             std::string("0bb8 05dc fa24 0000 0001 ffff *0dac f254 00ff 0010 0020 8000\r\nN F: 07d0  !"));
}

void tst_encoding::plainLinesNeverHave74Characters()
{
    QCOMPARE(plainLine("text"), std::string("text!"));
    QCOMPARE(plainLine(std::string(72, 'x')), std::string(72, 'x') + "!");
    QCOMPARE(plainLine(std::string(73, 'x')), std::string(73, 'x') + ".!");
    QCOMPARE(plainLine(std::string(74, 'x')), std::string(74, 'x') + "!");
}

// 52 and 58 bytes are a voltage.
void tst_encoding::statusTextsAreShorterThanAVoltage()
{
    Measurement m;
    m.quality = 1000;
    m.risesX = m.risesY = 4294967295U;
    QCOMPARE(statusLine(m), std::string("status: quality 1000 rises 4294967295/4294967295"));
}

PADSCOPE_TESTS(tst_encoding);
#include "tst_encoding.moc"
