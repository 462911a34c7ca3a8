#include <QCheckBox>
#include <QSignalSpy>
#include <QSlider>
#include <QTabWidget>
#include <QTest>

#include "monitor/monitorview.h"
#include "orvexwrapper.h"
#include "support/otherstore.h"
#include "support/tests.h"

namespace {

QSlider *slider(const MonitorView &monitorView)
{
    return monitorView.view->findChild<QSlider *>("displayThresholdSlider");
}

} // namespace

/// What the tab reads, writes and leaves to the window, and what its controls do.
class MonitorSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void storedThreshold_data();
    void storedThreshold();
    void thresholdIsWrittenAtOnce();
    void storedLogging();
    void loggingIsWrittenOnClose();
    void loggingFromCodeChecksTheBox();
    void loggingByTheBox();
    void partlyCheckedIsIgnored();
    void intakeFollowsTheSlider();
};

void MonitorSettings::init()
{
    QSettings store("Corvane", "qorvexgraph");
    store.clear();
    store.sync();
}

void MonitorSettings::storedThreshold_data()
{
    addColumns<QVariant, int, int>("stored", "threshold", "shown");
    addRow("ordinary", QVariant(250), 250, 250);
    addRow("least", QVariant(0), 0, 0);
    addRow("most", QVariant(1000), 1000, 1000);
    addRow("more than the slider has", QVariant(5000), 5000, 1000);
    addRow("negative", QVariant(-5), -5, 0);
    addRow("no number", QVariant("fast"), 0, 0);
}

void MonitorSettings::storedThreshold()
{
    QFETCH(QVariant, stored);
    otherStore().setValue("monitor.displayThreshold", stored);
    MonitorView monitorView;
    QTEST(monitorView.view->displayThreshold, "threshold");
    QTEST(slider(monitorView)->value(), "shown");
    QCOMPARE(otherStore().value("monitor.displayThreshold").toString(), stored.toString());
}

void MonitorSettings::thresholdIsWrittenAtOnce()
{
    MonitorView monitorView;
    slider(monitorView)->setValue(321);
    QCOMPARE(monitorView.view->displayThreshold, 321);
    QCOMPARE(otherStore().value("monitor.displayThreshold").toInt(), 321);
    slider(monitorView)->setValue(2000);
    QCOMPARE(monitorView.view->displayThreshold, 1000);
    QCOMPARE(otherStore().value("monitor.displayThreshold").toInt(), 1000);
    slider(monitorView)->setFocus();
    QTest::keyClick(slider(monitorView), Qt::Key_Home);
    QCOMPARE(monitorView.view->displayThreshold, 0);
    QCOMPARE(otherStore().value("monitor.displayThreshold").toInt(), 0);
}

void MonitorSettings::storedLogging()
{
    otherStore().setValue("Log To File", true);
    MonitorView monitorView;
    QVERIFY(monitorView.view->logEnabled);
    QVERIFY(monitorView.view->logCheckBox->isChecked());
}

void MonitorSettings::loggingIsWrittenOnClose()
{
    MonitorView monitorView;
    monitorView.view->logCheckBox->setChecked(true);
    QVERIFY(!otherStore().contains("Log To File"));
    monitorView.window.close();
    QCOMPARE(otherStore().value("Log To File").toString(), QString("true"));
    monitorView.view->logCheckBox->setChecked(false);
    QCOMPARE(otherStore().value("Log To File").toString(), QString("true"));
    monitorView.window.close();
    QCOMPARE(otherStore().value("Log To File").toString(), QString("false"));
}

void MonitorSettings::loggingFromCodeChecksTheBox()
{
    MonitorView monitorView;
    QSignalSpy changes(monitorView.view->logCheckBox, SIGNAL(stateChanged(int)));
    // The box tells of its change before the call is over; that ends there.
    monitorView.view->LogToFile(true);
    QCOMPARE(changes.size(), 1);
    QVERIFY(monitorView.view->logCheckBox->isChecked());
    QVERIFY(monitorView.view->logEnabled);
    monitorView.view->LogToFile(true);
    QCOMPARE(changes.size(), 1);
    monitorView.view->LogToFile(false);
    QCOMPARE(changes.size(), 2);
    QVERIFY(!monitorView.view->logCheckBox->isChecked());
    QVERIFY(!monitorView.view->logEnabled);
}

void MonitorSettings::loggingByTheBox()
{
    MonitorView monitorView;
    QTest::keyClick(monitorView.view->logCheckBox, Qt::Key_Space);
    QVERIFY(monitorView.view->logCheckBox->isChecked());
    QVERIFY(monitorView.view->logEnabled);
    QTest::keyClick(monitorView.view->logCheckBox, Qt::Key_Space);
    QVERIFY(!monitorView.view->logCheckBox->isChecked());
    QVERIFY(!monitorView.view->logEnabled);
    monitorView.view->LogToFile(2);
    QVERIFY(monitorView.view->logCheckBox->isChecked());
    QVERIFY(monitorView.view->logEnabled);
    monitorView.view->LogToFile(0);
    QVERIFY(!monitorView.view->logCheckBox->isChecked());
    QVERIFY(!monitorView.view->logEnabled);
}

void MonitorSettings::partlyCheckedIsIgnored()
{
    MonitorView monitorView;
    monitorView.view->LogToFile(1);
    QVERIFY(!monitorView.view->logEnabled);
    monitorView.view->LogToFile(true);
    monitorView.view->LogToFile(1);
    QVERIFY(monitorView.view->logEnabled);
    QVERIFY(monitorView.view->logCheckBox->isChecked());
}

void MonitorSettings::intakeFollowsTheSlider()
{
    MonitorView monitorView;
    qorvexgraph &window = monitorView.window;
    window.tabs->setCurrentWidget(monitorView.view);
    window.hardware = new OrvexWrapper; // attached to no library
    window.paused = false;
    QCOMPARE(window.displayThreshold, 50);
    slider(monitorView)->setValue(700);
    QCOMPARE(window.displayThreshold, 50);

    const unsigned char report[] = {4, 33, 65, 66};
    qorvexgraph::DataCallback(1001, report, 4, &window);
    QCOMPARE(window.displayThreshold, 50);
    window.OnDataReceived();
    QCOMPARE(monitorView.rows(), QStringList{".!AB   04 21 41 42 "});
    QCOMPARE(window.displayThreshold, 700);
    slider(monitorView)->setValue(0);
    QCOMPARE(window.displayThreshold, 700);
    qorvexgraph::DataCallback(1001, report, 4, &window);
    window.OnDataReceived();
    QCOMPARE(window.displayThreshold, 0);

    delete window.hardware;
    window.hardware = nullptr;
}

PADSCOPE_TESTS(MonitorSettings);
#include "tst_monitorsettings.moc"
