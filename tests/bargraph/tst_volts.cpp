#include <QElapsedTimer>

#include "bargraph/display.h"
#include "bargraph/paintcounter.h"
#include "support/tests.h"

class TestVolts : public QObject
{
    Q_OBJECT

private slots:
    void countsDownOnceInTheLifeOfTheProcess();
};

/// One test, because what it tests never starts again.
void TestVolts::countsDownOnceInTheLifeOfTheProcess()
{
    qorvexgraph window;
    bargraph *view = window.barGraphView;
    PaintCounter paints(&window);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(QMetaObject::invokeMethod(view, "volts"));
    QCOMPARE(view->voltageRaw, 510);
    QCOMPARE(view->voltageMin, 510);
    QCOMPARE(view->voltageMax, 510);
    QCOMPARE(paints.take(), 1);

    // It goes on by itself.
    QTRY_COMPARE(view->voltageRaw, 509);
    QVERIFY(clock.elapsed() >= 100);
    QTRY_COMPARE(view->voltageRaw, 508);
    QVERIFY(clock.elapsed() >= 200);
    view->resetMinMaxVoltage();
    QVERIFY(paints.take() > 0);

    // The rest in one go.
    for (int raw = 507; raw >= 256; --raw) {
        QVERIFY(QMetaObject::invokeMethod(view, "volts"));
        QCOMPARE(view->voltageRaw, raw);
        QCOMPARE(view->voltageMin, raw);
        QCOMPARE(view->voltageMax, 507);
    }
    QCOMPARE(paints.take(), 1);

    // Neither the timers that are still running nor another view take a step more.
    QVERIFY(QMetaObject::invokeMethod(view, "volts"));
    QTest::qWait(300);
    QCOMPARE(view->voltageRaw, 256);
    QCOMPARE(paints.take(), 0);
    qorvexgraph other;
    QVERIFY(QMetaObject::invokeMethod(other.barGraphView, "volts"));
    QCOMPARE(other.barGraphView->voltageRaw, -1);

    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox:"));
    QCOMPARE(view->freqSpin->value(), 0);
    QCOMPARE(signalsOf(view), QVector<int>(12, 0));
}

PADSCOPE_TESTS(TestVolts);
#include "tst_volts.moc"
