#include <QAbstractEventDispatcher>
#include <QElapsedTimer>

#include "bargraph/barview.h"
#include "support/tests.h"

namespace {

/// Milliseconds of the single-shot timers that are running.
QVector<int> runningTimers()
{
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    QVector<int> intervals;
    for (QObject *timer : dispatcher->children()) {
        for (const QAbstractEventDispatcher::TimerInfo &info : dispatcher->registeredTimers(timer))
            intervals += info.interval;
    }
    return intervals;
}

} // namespace

class TestVolts : public QObject
{
    Q_OBJECT

private slots:
    void countsDownOnceInTheLifeOfTheProcess();
};

/// One test, because what it tests never starts again.
void TestVolts::countsDownOnceInTheLifeOfTheProcess()
{
    BarView bars;
    PaintCounter paints(bars.view);
    const auto step = [](BarView &stepped) { return QMetaObject::invokeMethod(&stepped.view, "volts"); };
    QVERIFY(step(bars));
    QCOMPARE(runningTimers(), QVector<int>{100});
    QCOMPARE(bars.state(), QStringLiteral("volts 510 510 510"));
    QCOMPARE(paints.take(), 1);

    // It goes on by itself.
    QTRY_COMPARE(bars.state(), QStringLiteral("volts 509 509 510"));
    QTRY_COMPARE(bars.state(), QStringLiteral("volts 508 508 510"));
    bars.view.resetMinMaxVoltage();
    QVERIFY(paints.take() > 0);

    // The rest in one go.
    for (int raw = 507; raw >= 256; --raw) {
        QVERIFY(step(bars));
        QCOMPARE(bars.state(), QStringLiteral("volts %1 %1 507").arg(raw));
    }
    QCOMPARE(paints.take(), 1);

    // Neither the timers that are still running nor another view take a step more.
    QVERIFY(step(bars));
    QTRY_COMPARE(runningTimers(), QVector<int>{});
    QCOMPARE(bars.state(), QStringLiteral("volts 256 256 507"));
    QCOMPARE(paints.take(), 0);
    BarView other;
    QVERIFY(step(other));
    QCOMPARE(other.state(), QString());
}

PADSCOPE_TESTS(TestVolts);
#include "tst_volts.moc"
