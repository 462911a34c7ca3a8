#include "rates.h"
#include "support/tests.h"

using plots::Line;
using plots::Rates;

/// Reports a second, and times between them.
class RatesTests : public QObject
{
    Q_OBJECT

private slots:
    void bySecond();
    void byTenth();
    void dropOut();
    void longDropOut();
    void lastPart();
    void gaps();
    void reportsOfOneMoment();
};

/// 100 a second for 20 s: each second has 100, drawn at its middle.
void RatesTests::bySecond()
{
    Rates rates({0, 20}, 100);
    for (int i = 0; i < 2000; ++i)
        rates.add(i / 100.0);
    rates.finish();
    const std::vector<Line> lines = rates.rateLines();
    QCOMPARE(lines.size(), std::size_t(1));
    QCOMPARE(lines[0].size(), 20);
    QCOMPARE(lines[0].first(), QPointF(0.5, 100));
    QCOMPARE(lines[0].last(), QPointF(19.5, 100));
}

void RatesTests::byTenth()
{
    Rates rates({0, 0.5}, 100);
    for (const double time : {0.01, 0.02, 0.03, 0.31})
        rates.add(time);
    rates.finish();
    const std::vector<Line> expected{{{0.05, 30}, {0.15, 0}, {0.25, 0}, {0.35, 10}, {0.45, 0}}};
    const std::vector<Line> lines = rates.rateLines();
    QCOMPARE(lines.size(), std::size_t(1));
    QCOMPARE(lines[0].size(), expected[0].size());
    for (int i = 0; i < lines[0].size(); ++i) {
        QVERIFY(qAbs(lines[0][i].x() - expected[0][i].x()) < 1e-9);
        QVERIFY(qAbs(lines[0][i].y() - expected[0][i].y()) < 1e-9);
    }
}

/// A second without a report, in an hour in which a pixel is 4.5 s wide.
void RatesTests::dropOut()
{
    Rates rates({0, 3600}, 800);
    for (int second = 0; second < 3600; ++second) {
        for (int i = 0; second != 1234 && i < 10; ++i)
            rates.add(second + i / 10.0);
    }
    rates.finish();
    QVERIFY(rates.rateLines()[0].contains({1234.5, 0}));
}

/// Hundreds of years, as a wrong time stamp may tell, are over at once.
void RatesTests::longDropOut()
{
    Rates rates({0, 1e10}, 800);
    rates.add(0);
    rates.add(1e10 - 1);
    rates.finish();
    QVERIFY(rates.rateLines()[0].contains({1.5, 0}));
    QCOMPARE(rates.rateLines()[0].first(), QPointF(0.5, 1));
}

/// A rest of less than half a second tells no rate; a longer one goes by its own length.
void RatesTests::lastPart()
{
    Rates half({0, 20.5}, 100);
    Rates less({0, 20.25}, 100);
    for (Rates *rates : {&half, &less}) {
        rates->add(20.125);
        rates->finish();
    }
    QCOMPARE(half.rateLines()[0].last(), QPointF(20.25, 2));
    QCOMPARE(less.rateLines()[0].last(), QPointF(19.5, 0));
}

void RatesTests::gaps()
{
    Rates rates({0, 20}, 100);
    for (const double time : {1.0, 1.25, 5.0})
        rates.add(time);
    rates.finish();
    QCOMPARE(rates.gapLines(), (std::vector<Line>{{{1.25, 250}, {5, 3750}}}));
}

/// A logarithm of nothing would be infinite.
void RatesTests::reportsOfOneMoment()
{
    Rates rates({0, 20}, 100);
    rates.add(1);
    rates.add(1);
    QVERIFY(rates.gapLines()[0].first().y() > 0);
}

PADSCOPE_TESTS(RatesTests);
#include "tst_rates.moc"
