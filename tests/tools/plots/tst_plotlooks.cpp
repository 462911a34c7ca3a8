#include <cmath>
#include <QColor>
#include <QRegularExpression>

#include "program.h"
#include "support/tests.h"

using examplecapture::start;

/// What the curves of `padscope plot` look like.
class PlotLooksTests : public QObject
{
    Q_OBJECT

private slots:
    void peakIsInThePicture();
    void crowdedCurvesStandApart();
    void coloursOnWhite();

private:
    const Files files;
};

/// One report among 20,000 has the highest voltage, 1023 * 4.88 / 1000 V = 4.99224 V, and the line goes
/// there. The canvas is 200 high, begins at 50 below the title and the legend, and ends at 6 V.
void PlotLooksTests::peakIsInThePicture()
{
    QByteArray bytes = start();
    for (quint64 i = 0; i < 20'000; ++i) {
        const QByteArray reading = i == 12'345 ? "34770cff03" : "34770c0000";
        bytes += blocks::packet(1 + i * 10'000'000,
                                packetBytes(1, 1, 0, 7, 0, QByteArray::fromHex(reading), 1, 0, i));
    }
    const QString output = files.path("peak.svg");
    QCOMPARE(padscope({"plot", files.write("peak", bytes), "--what", "voltage", "-o", output}).status, 3);
    // 110 + 800 * 12345 / 19999 = 603.825, and 50 + 200 * (1 - 4.99224 / 6) = 83.592
    QVERIFY(Files::read(output).contains("603.825,83.592 "));
}

/// Three phases that swing in each column of pixels, and three that don't.
void PlotLooksTests::crowdedCurvesStandApart()
{
    QByteArray bytes = start();
    for (quint64 i = 0; i < 5'000; ++i) {
        const QByteArray x = i % 2 == 0 ? "e803e803e803" : "18fc18fc18fc"; // 1000 and -1000
        const QByteArray report = "282f01" + QByteArray(20, '0') + x + "010002000300" + QByteArray(30, '0');
        bytes += blocks::packet(1 + i * 10'000'000,
                                packetBytes(1, 1, 0, 7, 0, QByteArray::fromHex(report), 1, 0, i));
    }
    const QString output = files.path("crowded.svg");
    QCOMPARE(padscope({"plot", files.write("crowded", bytes), "--what", "signals", "-o", output}).status, 3);
    const QByteArray svg = Files::read(output);
    for (const char *phase : {"0°", "60°", "120°"}) {
        const QByteArray title = QByteArray(">Board 7: X fine (SignalReport, sub-type 1), ") + phase + '<';
        QCOMPARE(svg.count(title), 1);
    }
    QCOMPARE(svg.count(">Board 7: Y fine (SignalReport, sub-type 1)<"), 1);
}

/// By the contrast ratio of the Web Content Accessibility Guidelines; yellow has 1.3.
void PlotLooksTests::coloursOnWhite()
{
    QByteArray bytes = start();
    quint64 sequence = 0;
    for (const char *type : {"0a2f04", "0332", "2868", "09a2", "1aa3", "1fa4", "34770c", "0821"}) {
        const QByteArray report = QByteArray::fromHex(type).leftJustified(52, '\0');
        bytes += blocks::packet(1 + 10'000'000 * sequence,
                                packetBytes(1, 1, 0, 1001, 0, report.left(report[0]), 1, 0, sequence));
        ++sequence;
    }
    const QString output = files.path("colours.svg");
    const ProgramRun run = padscope({"plot", "-", "--what", "rates", "-o", output}, bytes);
    const QString svg = QString::fromUtf8(Files::read(output));
    QSet<QString> colours;
    const QRegularExpression pattern(QStringLiteral(" stroke=\"(#[0-9a-f]{6})\""));
    for (auto matches = pattern.globalMatch(svg); matches.hasNext();)
        colours += matches.next().captured(1);
    QVERIFY(colours.remove(QStringLiteral("#d8d8d8"))); // of the grid
    QCOMPARE(colours.size(), 8);
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    for (const QString &name : qAsConst(colours)) {
        const QColor colour(name);
        const double luminance = 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
                                 0.0722 * linear(colour.blueF());
        QVERIFY2(1.05 / (luminance + 0.05) > 2, qPrintable(name));
    }
}

PADSCOPE_TESTS(PlotLooksTests);
#include "tst_plotlooks.moc"
