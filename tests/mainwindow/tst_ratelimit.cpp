#include <QSignalSpy>

#include "mainwindow/testwindow.h"
#include "support/datalines.h"
#include "support/packets.h"
#include "support/testclock.h"

/// Which reports the callback keeps, by a clock that the tests set.
///
/// When a report last restarted the limit is remembered for the whole process; the first test finds it unset.
class RateLimitTests : public QObject
{
    Q_OBJECT

private slots:
    void reports_data();
    void reports();
    void everyType();
    void midnightBetweenTwoReadingsRestartsFromTheNewDay();
    void allWindowsShareTheClock();
};

namespace {

constexpr unsigned char text = 50;
constexpr unsigned char limited = 104;

/// A window that shows what it keeps at once.
class ReceivingWindow : public AttachedWindow
{
public:
    /// A report of this type, so long after noon. \return whether it was kept
    bool receive(int type, int milliseconds)
    {
        testclock::stopAt(noon.addMSecs(milliseconds));
        return receiveNow(type);
    }

    bool receiveNow(int type)
    {
        const int before = view->packets.size();
        library.deliver(1, QByteArray("\3") + static_cast<char>(type) + '\0');
        return view->packets.size() == before + 1;
    }

    RecordingView *const view = showRecordingView();
    const QSignalSpy received{this, SIGNAL(DataReceived())};
};

} // namespace

void RateLimitTests::reports_data()
{
    addColumns<int, QStringList>("threshold", "reports");
    for (const QStringList &line : dataLines(TEST_FOLDER "/ratelimit.txt", 3, 3))
        addRow(qPrintable(line[0]), line[1].toInt(), line[2].split(' '));
}

void RateLimitTests::reports()
{
    QFETCH(int, threshold);
    QFETCH(QStringList, reports);
    ReceivingWindow window;
    window.view->displayThreshold = threshold;
    for (const QString &report : qAsConst(reports)) {
        const bool isKept = report.endsWith('+');
        const QStringList parts = report.chopped(1).split('@');
        QVERIFY2(window.receive(parts.at(0).toInt(), parts.at(1).toInt()) == isKept, qPrintable(report));
        QCOMPARE(window.received.count(), window.view->packets.size());
    }
}

void RateLimitTests::everyType()
{
    ReceivingWindow window;
    QVector<int> dropped;
    for (int type = 0; type <= 255; ++type) {
        window.receive(text, 0);
        if (!window.receive(type, 1))
            dropped += type;
    }
    QCOMPARE(dropped, QVector<int>({47, 104, 162, 163, 164}));
}

void RateLimitTests::midnightBetweenTwoReadingsRestartsFromTheNewDay()
{
    ReceivingWindow window;
    const QTime before(23, 59, 59, 999);
    const QTime after(0, 0, 0, 1);
    testclock::willRead({before, after});
    QVERIFY(window.receiveNow(text));
    QCOMPARE(window.view->packets.last().time, before);

    testclock::stopAt(after.addMSecs(50));
    QVERIFY(!window.receiveNow(limited));
    testclock::stopAt(after.addMSecs(51));
    QVERIFY(window.receiveNow(limited));
}

void RateLimitTests::allWindowsShareTheClock()
{
    ReceivingWindow one;
    one.receive(text, 0);
    ReceivingWindow other;
    QVERIFY(!other.receive(limited, 50));
    QVERIFY(other.receive(limited, 51));
    one.AttachHardware();
    other.detach();
    QVERIFY(!one.receive(limited, 101));
    QVERIFY(one.receive(limited, 102));
}

PADSCOPE_TESTS(RateLimitTests);
#include "tst_ratelimit.moc"
