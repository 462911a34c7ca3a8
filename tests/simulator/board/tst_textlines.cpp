#include "encoding.h"
#include "support/tests.h"

/// The board's texts, scanned as the bar graph scans them.
class tst_textlines : public QObject
{
    Q_OBJECT

private slots:
    void signalLineByHand();
    void signalLineScans();
    void signalLineOfEveryMomentHas74Characters();
    void plainLinesNeverHave74Characters();
    void statusTextsNeverHaveTheLengthOfAVoltage();
};

namespace {

Measurement sample()
{
    Measurement m;
    m.xFine = {3000, 1500, -1500};
    m.yFine = {0, 1, -1};
    m.xCoarse = {3500, -3500, 255};
    m.yCoarse = {16, 32, -32768};
    m.proximity = 'N';
    m.frequencyRaw = 2000;
    return m;
}

} // namespace

void tst_textlines::signalLineByHand()
{
    // 3000 is 0BB8h, 1500 is 05DCh and -1500 FA24h; 3500 is 0DACh and -3500 F254h; 2000 is 07D0h.
    const std::string line = signalLine(sample());
    QCOMPARE(line,
             std::string("0bb8 05dc fa24 0000 0001 ffff *0dac f254 00ff 0010 0020 8000\r\nN F: 07d0  !"));
    QCOMPARE(line.size(), std::size_t{74});
    QCOMPARE(line.find('!'), std::size_t{73});
    QCOMPARE(line.find('\n'), std::size_t{61});
    QCOMPARE(line[62], 'N');
    QCOMPARE(line.substr(67, 4), std::string("07d0"));
}

void tst_textlines::signalLineScans()
{
    const std::string line = signalLine(sample());
    short words[12] = {};
    const int scanned = sscanf(
        line.c_str(), "%hx %hx %hx %hx %hx %hx *%hx %hx %hx %hx %hx %hx\r\n",
        reinterpret_cast<unsigned short *>(words), reinterpret_cast<unsigned short *>(words + 1),
        reinterpret_cast<unsigned short *>(words + 2), reinterpret_cast<unsigned short *>(words + 3),
        reinterpret_cast<unsigned short *>(words + 4), reinterpret_cast<unsigned short *>(words + 5),
        reinterpret_cast<unsigned short *>(words + 6), reinterpret_cast<unsigned short *>(words + 7),
        reinterpret_cast<unsigned short *>(words + 8), reinterpret_cast<unsigned short *>(words + 9),
        reinterpret_cast<unsigned short *>(words + 10), reinterpret_cast<unsigned short *>(words + 11));
    QCOMPARE(scanned, 12);
    const short expected[12] = {3000, 1500, -1500, 0, 1, -1, 3500, -3500, 255, 16, 32, -32768};
    for (int i = 0; i < 12; ++i)
        QCOMPARE(words[i], expected[i]);
    unsigned short frequency = 0;
    QCOMPARE(sscanf(line.c_str() + 67, "%hx", &frequency), 1);
    QCOMPARE(frequency, static_cast<unsigned short>(2000));
}

void tst_textlines::signalLineOfEveryMomentHas74Characters()
{
    Sensor sensor(1);
    for (int tenths = 0; tenths < 1000; ++tenths) {
        const std::string line = signalLine(sensor.measure(tenths / 10.0));
        QCOMPARE(line.size(), std::size_t{74});
        QCOMPARE(line.find('!'), std::size_t{73});
    }
}

void tst_textlines::plainLinesNeverHave74Characters()
{
    QCOMPARE(plainLine("text"), std::string("text!"));
    QCOMPARE(plainLine(std::string(72, 'x')), std::string(72, 'x') + "!");
    QCOMPARE(plainLine(std::string(73, 'x')), std::string(73, 'x') + ".!");
    QCOMPARE(plainLine(std::string(74, 'x')), std::string(74, 'x') + "!");
}

void tst_textlines::statusTextsNeverHaveTheLengthOfAVoltage()
{
    Measurement m;
    m.quality = 900;
    for (m.risesX = 1; m.risesX < 1000000000; m.risesX *= 10) {
        for (m.risesY = 1; m.risesY < 1000000000; m.risesY *= 10) {
            const std::size_t length = 2 + statusLine(m).size();
            QVERIFY2(length != 52 && length != 58, qPrintable(QString::fromStdString(statusLine(m))));
        }
    }
}

PADSCOPE_TESTS(tst_textlines);
#include "tst_textlines.moc"
