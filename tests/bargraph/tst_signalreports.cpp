#include <QRegularExpression>

#include "bargraph/barview.h"
#include "support/capturedoutput.h"
#include "support/datalines.h"
#include "support/tests.h"

namespace {

/// What the data files abbreviate.
const std::pair<const char *, const char *> names[] = {
    {"FULL", fullReport},
    {"FREQ", "28 2f 01 00000000000000000000 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000"},
    {"LINE", signalLine},
    {"OLD", "fff9 fff9 fff9 fff9 fff9 fff9*fff9 fff9 fff9 fff9 fff9 fff9%0D%0AP     0008%0D%0A!"},
    {"TAKEN", signalLineState},
    {"SHOWN", "shown Prox: O; known 900; box 900"},
};

QString withoutNames(QString text)
{
    for (const auto &[name, meaning] : names)
        text.replace(name, meaning);
    return text;
}

_DataPacket packetFrom(const QString &description)
{
    static const QRegularExpression form("^(?:([+-]\\d+) )?(text )?(.*)$");
    const QRegularExpressionMatch parts = form.match(description);
    const QByteArray content = parts.captured(3).toLatin1();
    const bool isText = !parts.captured(2).isEmpty();
    return packetOf(isText ? textReport(QByteArray::fromPercentEncoding(content)) : hex(content),
                    noon.addMSecs(parts.captured(1).toInt()));
}

bool isSignal(int length, int type, int subType)
{
    return type == 47 && (length == 10 || length == 16 || (length == 40 && subType == 1));
}

bool isVoltage(int length, int type)
{
    return type == 119 && (length == 52 || length == 58);
}

} // namespace

/// What the bar graph takes from reports. The cases are lines of data files.
class TestSignalReports : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void reports_data();
    void reports();
    void selection();
    void missingBytesAreZero_data();
    void missingBytesAreZero();
};

/// The time of the last picture is one for all views.
void TestSignalReports::init()
{
    BarView().display(hex("34 77 0c 00 00"), noon);
}

void TestSignalReports::reports_data()
{
    addColumns<QString, int, QString>("packets", "pictures", "state");
    for (const char *path : {TEST_FOLDER "/reports.txt", TEST_FOLDER "/signallines.txt"}) {
        for (const QStringList &line : dataLines(path, 4, 4))
            addRow(qPrintable(line[0]), withoutNames(line[1]), line[2].toInt(), withoutNames(line[3]));
    }
}

void TestSignalReports::reports()
{
    QFETCH(QString, packets);
    BarView bars;
    PaintCounter paints(bars.view);
    QString printed;
    for (const QString &description : packets.split("; ")) {
        paints.take();
        _DataPacket packet = packetFrom(description);
        CapturedOutput output(stdout);
        bars.view.Display(&packet);
        printed += output.text().trimmed();
    }
    QTEST(paints.take(), "pictures");
    QTEST(bars.state() + (printed.isEmpty() ? printed : "; printed " + printed), "state");
}

/// By the length byte, whatever the packet's length; only a full report's sub-type counts.
void TestSignalReports::selection()
{
    BarView bars;
    PaintCounter paints(bars.view);
    for (int length : {0, 9, 10, 11, 14, 15, 16, 17, 25, 39, 40, 41, 51, 52, 53, 57, 58, 59, 255}) {
        for (int type : {0, 46, 47, 48, 51, 104, 118, 119, 120, 162, 163, 164, 255}) {
            for (int subType : {0, 1, 2, 12, 255}) {
                const QString before = bars.state();
                QByteArray report(64, '\x21');
                report[0] = static_cast<char>(length);
                report[1] = static_cast<char>(type);
                report[2] = static_cast<char>(subType);
                bars.display(report);
                const bool isRead = isSignal(length, type, subType) || isVoltage(length, type);
                QVERIFY2(paints.take() == (isRead ? 1 : 0), report.left(3).toHex());
                QVERIFY2(isRead || bars.state() == before, report.left(3).toHex());
            }
        }
    }
}

void TestSignalReports::missingBytesAreZero_data()
{
    QTest::addColumn<QByteArray>("report");
    addRow("full", hex(fullReport));
    addRow("short", hex("0a 2f 04 1111 1111 1111 11"));
    addRow("normalised", hex("10 2f 05 1111 1111 1111 11 1111 1111 1111"));
    addRow("voltage of length 52", hex("34 77 0c 11 11 11"));
    addRow("voltage of length 58", hex("3a 77 0c 11 11 11"));
}

/// The bytes lie in a block of their own size, so that a sanitizer sees what is read behind them.
void TestSignalReports::missingBytesAreZero()
{
    QFETCH(QByteArray, report);
    for (int length = 0; length <= report.size(); ++length) {
        const std::vector<char> block(report.begin(), report.begin() + length);
        BarView cut;
        cut.display(QByteArray::fromRawData(block.data(), length));
        BarView padded;
        padded.display(report.left(length) + QByteArray(64, '\0'));
        QCOMPARE(cut.state(), padded.state());
    }
}

PADSCOPE_TESTS(TestSignalReports);
#include "tst_signalreports.moc"
