#include <QCheckBox>
#include <QSignalSpy>
#include <QSlider>

#include "monitor/monitortest.h"

/// The display threshold and logging: stored, chosen and saved.
class MonitorSettings : public MonitorTest
{
    Q_OBJECT

private slots:
    void storedThreshold_data();
    void storedThreshold();
    void thresholdIsWrittenAtOnce();
    void storedLogging();
    void loggingIsSaved();
    void loggingFromCodeChecksTheBox();
    void loggingByTheBox();
    void partlyCheckedIsIgnored();

private:
    QSlider *slider() const { return view->findChild<QSlider *>("displayThresholdSlider"); }
    QCheckBox *box() const { return view->findChild<QCheckBox *>(); }
    void verifyThreshold(int threshold) const;
    void verifyLogging(bool on) const;
};

void MonitorSettings::verifyThreshold(int threshold) const
{
    QCOMPARE(view->displayThresholdMs(), threshold);
    QCOMPARE(otherStore().value("monitor.displayThreshold").toInt(), threshold);
}

void MonitorSettings::verifyLogging(bool on) const
{
    QCOMPARE(box()->isChecked(), on);
    QCOMPARE(Inspect::isLogging(*view), on);
}

void MonitorSettings::storedThreshold_data()
{
    addColumns<QVariant, int, int>("stored", "threshold", "shown");
    addRow("ordinary", QVariant(250), 250, 250);
    addRow("min", QVariant(0), 0, 0);
    addRow("max", QVariant(1000), 1000, 1000);
    addRow("more than the slider has", QVariant(5000), 5000, 1000);
    addRow("negative", QVariant(-5), -5, 0);
    addRow("no number", QVariant("fast"), 0, 0);
}

void MonitorSettings::storedThreshold()
{
    QFETCH(QVariant, stored);
    otherStore().setValue("monitor.displayThreshold", stored);
    build();
    QTEST(view->displayThresholdMs(), "threshold");
    QTEST(slider()->value(), "shown");
    QCOMPARE(otherStore().value("monitor.displayThreshold").toString(), stored.toString());
}

void MonitorSettings::thresholdIsWrittenAtOnce()
{
    slider()->setValue(321);
    verifyThreshold(321);
    slider()->setValue(2000);
    verifyThreshold(1000);
    QTest::keyClick(slider(), Qt::Key_Home);
    verifyThreshold(0);
}

void MonitorSettings::storedLogging()
{
    otherStore().setValue("Log To File", true);
    build();
    verifyLogging(true);
}

void MonitorSettings::loggingIsSaved()
{
    for (const bool on : {true, false}) {
        box()->setChecked(on);
        QCOMPARE(otherStore().contains("Log To File"), !on);
        view->saveSettings();
        QCOMPARE(otherStore().value("Log To File"), QVariant(on));
    }
}

void MonitorSettings::loggingFromCodeChecksTheBox()
{
    const QSignalSpy changes(box(), SIGNAL(stateChanged(int)));
    // The box tells of its change before the call is over; that ends there.
    view->LogToFile(true);
    QCOMPARE(changes.size(), 1);
    verifyLogging(true);
    view->LogToFile(true);
    QCOMPARE(changes.size(), 1);
    view->LogToFile(false);
    QCOMPARE(changes.size(), 2);
    verifyLogging(false);
}

void MonitorSettings::loggingByTheBox()
{
    QTest::keyClick(box(), Qt::Key_Space);
    verifyLogging(true);
    QTest::keyClick(box(), Qt::Key_Space);
    verifyLogging(false);
    view->LogToFile(2);
    verifyLogging(true);
    view->LogToFile(0);
    verifyLogging(false);
}

void MonitorSettings::partlyCheckedIsIgnored()
{
    view->LogToFile(1);
    verifyLogging(false);
    view->LogToFile(true);
    view->LogToFile(1);
    verifyLogging(true);
}

PADSCOPE_TESTS(MonitorSettings);
#include "tst_monitorsettings.moc"
