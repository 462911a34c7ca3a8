#include "bargraph/barview.h"
#include "support/tests.h"

/// Signal lines that come in parts, and the first packet of the process.
class TestSignalLines : public QObject
{
    Q_OBJECT

private slots:
    void firstPacketStartsThePause();
    void splitAnywhere();
    void oneCharacterEach();
};

/// Must run first: the time is kept for the life of the process.
void TestSignalLines::firstPacketStartsThePause()
{
    const auto untilMidnight = [] { return QTime::currentTime().msecsTo(QTime(23, 59, 59, 999)); };
    QTRY_VERIFY_WITH_TIMEOUT(untilMidnight() > 10000, 30000);

    BarView bars;
    const QByteArray report = textReport(QByteArray::fromPercentEncoding(signalLine));
    const QTime before = QTime::currentTime();
    bars.display(hex("00 00 00"), before.addMSecs(5000)); // of no kind that the view takes
    const QTime after = QTime::currentTime();
    QTRY_VERIFY(after.msecsTo(QTime::currentTime()) > 100);
    bars.display(report, before);
    QVERIFY(!bars.state().contains("shown"));
    bars.display(report, after.addMSecs(50));
    QVERIFY(bars.state().contains("shown Prox: O"));
}

void TestSignalLines::splitAnywhere()
{
    const QByteArray line = QByteArray::fromPercentEncoding(signalLine);
    for (int index = 1; index < line.size(); ++index) {
        BarView bars;
        bars.display(textReport(line.left(index)));
        QCOMPARE(bars.state(), QString("text " + line.left(index).toPercentEncoding(" *")));
        bars.display(textReport(line.mid(index)));
        QVERIFY(bars.state().startsWith(signalLineState));
    }
}

void TestSignalLines::oneCharacterEach()
{
    BarView bars;
    for (char character : QByteArray::fromPercentEncoding(signalLine))
        bars.display(textReport(QByteArray(1, character)));
    QVERIFY(bars.state().startsWith(signalLineState));
}

PADSCOPE_TESTS(TestSignalLines);
#include "tst_signallines.moc"
