#include "replaynumbers.h"
#include "support/tests.h"

/// Times and rates of a replay as texts, and which rate follows which.
class ReplayNumbersTest : public QObject
{
    Q_OBJECT

private slots:
    void times_data();
    void times();
    void rates_data();
    void rates();
};

void ReplayNumbersTest::times_data()
{
    addColumns<qint64, QString>("ns", "text");
    addRow("start", qint64{0}, "0:00.000");
    addRow("just below a millisecond", qint64{999'999}, "0:00.000");
    addRow("a millisecond", qint64{1'000'000}, "0:00.001");
    addRow("seconds", qint64{1'234'567'890}, "0:01.234");
    addRow("minutes", qint64{754'056'000'000}, "12:34.056");
    addRow("hours", qint64{36'000'000'000'000}, "600:00.000");
}

void ReplayNumbersTest::times()
{
    QFETCH(qint64, ns);
    QTEST(replayTimeText(ns), "text");
}

void ReplayNumbersTest::rates_data()
{
    addColumns<double, QString, double, double>("rate", "text", "faster", "slower");
    addRow("slowest", 0.1, "0.1x", 0.2, 0.1);
    addRow("0.2", 0.2, "0.2x", 0.5, 0.1);
    addRow("0.5", 0.5, "0.5x", 1.0, 0.2);
    addRow("1", 1.0, "1x", 2.0, 0.5);
    addRow("2", 2.0, "2x", 5.0, 1.0);
    addRow("5", 5.0, "5x", 10.0, 2.0);
    addRow("10", 10.0, "10x", 20.0, 5.0);
    addRow("20", 20.0, "20x", 50.0, 10.0);
    addRow("50", 50.0, "50x", 100.0, 20.0);
    addRow("fastest but one", 100.0, "100x", 0.0, 50.0);
    addRow("fastest", 0.0, "max", 0.0, 100.0);
    addRow("in between", 0.3, "0.3x", 0.5, 0.2);
}

void ReplayNumbersTest::rates()
{
    QFETCH(double, rate);
    QTEST(replayRateText(rate), "text");
    QTEST(fasterReplayRate(rate), "faster");
    QTEST(slowerReplayRate(rate), "slower");
}

PADSCOPE_TESTS(ReplayNumbersTest);
#include "tst_replaynumbers.moc"
