#include "simulator/replaycapture.h"
#include "support/tests.h"

/// What a step does, and what it leaves.
class tst_replaysteps : public QObject
{
    Q_OBJECT

private slots:
    void stepsTakeNoTimeOfTheCapture();
};

namespace {

QByteArray paused(const ReplayCapture &capture)
{
    return capture.scenario("\"paused\": true");
}

} // namespace

void tst_replaysteps::stepsTakeNoTimeOfTheCapture()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.report(100'000, 1001, "04c801");
    capture.report(200'000, 1001, "04c802");
    capture.report(200'100, 1001, "04c803");
    capture.report(200'300, 1001, "04c804");
    Playing playing(paused(capture));
    playing.library.replayStep(3);
    QVERIFY(playing.hears(3));
    QCOMPARE(replayOf(playing.library).achievedRate, 0.0);
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    const double achieved = replayOf(playing.library).achievedRate; // of the last 200 ms
    QVERIFY2(achieved > 0.1 && achieved < 2, QByteArray::number(achieved));
}

PADSCOPE_TESTS(tst_replaysteps);
#include "tst_replaysteps.moc"
