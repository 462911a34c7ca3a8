#include <QSignalSpy>

#include "support/recordingview.h"
#include "support/testclock.h"
#include "support/tests.h"

/// Which reports the callback keeps, by a clock that the tests set.
///
/// When a report last restarted the limit is remembered for the whole process; the first test finds it unset.
class RateLimitTests : public QObject
{
    Q_OBJECT

private slots:
    void nothingLimitedIsKeptBeforeTheFirstText();
    void gapMustExceedTheThreshold_data();
    void gapMustExceedTheThreshold();
    void keptReportRestartsTheClock();
    void droppedReportDoesNot();
    void aboutOneInSixOfEveryTenMilliseconds();
    void textIsAlwaysKept();
    void otherTypesLeaveTheClockAlone();
    void everyType();
    void clockThatGoesBackDropsUntilTheNextText();
    void midnightBetweenTwoReadingsRestartsFromTheNewDay();
    void droppedReportEmitsNothing();
    void thresholdBelowZeroKeepsAtOnce();
    void allWindowsShareTheClock();
};

namespace {

const QTime noon(12, 0);

/// A window that takes reports in and leaves them queued.
class ReceivingWindow : public qorvexgraph
{
public:
    ReceivingWindow() { paused = false; }
    ~ReceivingWindow() override { clear(); }

    /// A report of this type, so long after noon. \return whether it was kept
    bool receive(unsigned char type, int milliseconds)
    {
        testclock::stopAt(noon.addMSecs(milliseconds));
        return receiveNow(type);
    }

    bool receiveNow(unsigned char type)
    {
        const unsigned char report[] = {3, type, 0};
        const std::size_t before = packetQueue.size();
        DataCallback(1, report, sizeof report, this);
        return packetQueue.size() == before + 1;
    }

    void clear()
    {
        qDeleteAll(packetQueue);
        packetQueue.clear();
    }
};

constexpr unsigned char text = 50;
constexpr unsigned char limited = 104;
constexpr unsigned char unknown = 33;

} // namespace

void RateLimitTests::nothingLimitedIsKeptBeforeTheFirstText()
{
    ReceivingWindow window;
    for (int type : {47, 104, 162, 163, 164})
        QVERIFY2(!window.receive(static_cast<unsigned char>(type), 0), qPrintable(QString::number(type)));
    QVERIFY(!window.receive(limited, 60000));
    window.displayThreshold = 0;
    QVERIFY(!window.receive(limited, 120000));
    window.displayThreshold = 50;

    // Another type is kept, but does not start the clock.
    QVERIFY(window.receive(unknown, 120000));
    QVERIFY(!window.receive(limited, 180000));

    QVERIFY(window.receive(text, 180000));
    QVERIFY(!window.receive(limited, 180050));
    QVERIFY(window.receive(limited, 180051));
}

void RateLimitTests::gapMustExceedTheThreshold_data()
{
    addColumns<int, int, bool>("threshold", "gap", "kept");
    addRow("default, just too soon", 50, 50, false);
    addRow("default, just late enough", 50, 51, true);
    addRow("none, at once", 0, 0, false);
    addRow("none, a millisecond", 0, 1, true);
    addRow("slowest, a second", 1000, 1000, false);
    addRow("slowest, just late enough", 1000, 1001, true);
}

void RateLimitTests::gapMustExceedTheThreshold()
{
    QFETCH(int, threshold);
    QFETCH(int, gap);
    ReceivingWindow window;
    window.displayThreshold = threshold;
    window.receive(text, 0);
    QTEST(window.receive(limited, gap), "kept");
}

void RateLimitTests::keptReportRestartsTheClock()
{
    ReceivingWindow window;
    window.receive(text, 0);
    QVERIFY(window.receive(47, 60));
    QVERIFY(!window.receive(162, 110));
    QVERIFY(window.receive(163, 111));
}

void RateLimitTests::droppedReportDoesNot()
{
    ReceivingWindow window;
    window.receive(text, 0);
    QVERIFY(!window.receive(limited, 49));
    QVERIFY(window.receive(limited, 51));
}

void RateLimitTests::aboutOneInSixOfEveryTenMilliseconds()
{
    ReceivingWindow window;
    window.receive(text, 0);
    QVector<int> kept;
    for (int time = 10; time <= 300; time += 10) {
        if (window.receive(limited, time))
            kept += time;
    }
    QCOMPARE(kept, QVector<int>({60, 120, 180, 240, 300}));
}

void RateLimitTests::textIsAlwaysKept()
{
    ReceivingWindow window;
    QVERIFY(window.receive(text, 0));
    QVERIFY(window.receive(text, 0));
    QVERIFY(window.receive(text, 1));
    // And each restarts the clock.
    QVERIFY(!window.receive(limited, 51));
    QVERIFY(window.receive(limited, 52));
}

void RateLimitTests::otherTypesLeaveTheClockAlone()
{
    ReceivingWindow window;
    window.receive(text, 0);
    for (int type : {33, 119, 0, 255})
        QVERIFY(window.receive(static_cast<unsigned char>(type), 40));
    QVERIFY(window.receive(limited, 51));
}

void RateLimitTests::everyType()
{
    ReceivingWindow window;
    QVector<int> dropped;
    for (int type = 0; type <= 255; ++type) {
        window.receive(text, 0);
        if (!window.receive(static_cast<unsigned char>(type), 1))
            dropped += type;
    }
    QCOMPARE(dropped, QVector<int>({47, 104, 162, 163, 164}));
}

void RateLimitTests::clockThatGoesBackDropsUntilTheNextText()
{
    ReceivingWindow window;
    window.receive(text, 0);
    QVERIFY(!window.receive(limited, -1));
    QVERIFY(!window.receive(limited, -3600000));
    QVERIFY(window.receive(text, -3600000));
    QVERIFY(window.receive(limited, -3600000 + 51));
}

void RateLimitTests::midnightBetweenTwoReadingsRestartsFromTheNewDay()
{
    ReceivingWindow window;
    const QTime before(23, 59, 59, 999);
    const QTime after(0, 0, 0, 1);
    testclock::willRead({before, after});
    QVERIFY(window.receiveNow(text));
    QCOMPARE(window.packetQueue.back()->time, before);

    testclock::stopAt(after.addMSecs(50));
    QVERIFY(!window.receiveNow(limited));
    testclock::stopAt(after.addMSecs(51));
    QVERIFY(window.receiveNow(limited));
}

void RateLimitTests::droppedReportEmitsNothing()
{
    ReceivingWindow window;
    QSignalSpy received(&window, SIGNAL(DataReceived()));
    window.receive(text, 0);
    QCOMPARE(received.count(), 1);
    window.receive(limited, 1);
    QCOMPARE(received.count(), 1);
    window.receive(unknown, 1);
    QCOMPARE(received.count(), 2);
}

void RateLimitTests::thresholdBelowZeroKeepsAtOnce()
{
    ReceivingWindow window;
    window.displayThreshold = -1;
    window.receive(text, 0);
    QVERIFY(window.receive(limited, 0));
    QVERIFY(!window.receive(limited, -1));
}

void RateLimitTests::allWindowsShareTheClock()
{
    ReceivingWindow one;
    ReceivingWindow other;
    one.receive(text, 0);
    QVERIFY(!other.receive(limited, 50));
    QVERIFY(other.receive(limited, 51));
    QVERIFY(!one.receive(limited, 60));
}

PADSCOPE_TESTS(RateLimitTests);
#include "tst_ratelimit.moc"
