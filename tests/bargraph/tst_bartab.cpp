#include <QLineEdit>
#include <QSlider>
#include <QTabWidget>
#include <QTranslator>

#include "bargraph/attachedwindow.h"
#include "bargraph/display.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "support/otherstore.h"
#include "support/tests.h"

namespace {

const char *const thresholdSlider = "displayThresholdSlider";

/// Writes down what is asked of it, and translates nothing.
class RecordingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        asked += QByteArray(context) + ": " + source;
        return QString();
    }

    mutable QByteArrayList asked;
};

void type(qorvexgraph *window, const QString &line)
{
    window->commandLine->setText(line);
    QTest::keyClick(window->commandLine, Qt::Key_Return);
}

} // namespace

class TestBarTab : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void typedReset_data();
    void typedReset();
    void typedResetWithoutBoard();
    void eachSliderHasItsKey();
    void currentTabGoverns();
    void hiddenTabGetsNothing();
    void translations();
};

void TestBarTab::init()
{
    otherStore().clear();
}

void TestBarTab::typedReset_data()
{
    addColumns<QString, int, int, QString>("line", "tab", "extreme", "call");

    addRow("on this tab", QStringLiteral(":RMM"), 0, -1, sent(":RMM\\x0d"));
    addRow("on the monitor tab", QStringLiteral(":RMM"), 1, 500, sent(":RMM\\x0d"));
    addRow("lower case", QStringLiteral(":rmm"), 0, 500, sent(":rmm\\x0d"));
    addRow("with a blank", QStringLiteral(":RMM "), 0, 500, sent(":RMM \\x0d"));
    addRow("without the colon", QStringLiteral("RMM"), 0, 500, sent("RMM\\x0d"));
}

void TestBarTab::typedReset()
{
    QFETCH(QString, line);
    QFETCH(int, tab);
    AttachedWindow attached;
    display(attached.view(), hex("34 77 0c f4 01"));
    attached.window.tabs->setCurrentIndex(tab);
    type(&attached.window, line);
    QTEST(attached.view()->voltageMin, "extreme");
    QTEST(attached.view()->voltageMax, "extreme");
    QCOMPARE(attached.view()->voltageRaw, 500);
    QFETCH(QString, call);
    QCOMPARE(attached.library.takeCalls(), QStringList{call});
}

void TestBarTab::typedResetWithoutBoard()
{
    AttachedWindow attached;
    display(attached.view(), hex("34 77 0c f4 01"));
    attached.library.setBoards({});
    attached.window.AttachHardware();
    attached.library.takeCalls();
    type(&attached.window, QStringLiteral(":RMM"));
    QCOMPARE(attached.view()->voltageMin, 500);
    QCOMPARE(attached.view()->voltageMax, 500);
    QCOMPARE(attached.library.takeCalls(), QStringList());
}

void TestBarTab::eachSliderHasItsKey()
{
    qorvexgraph window;
    auto *ofBars = window.barGraphView->findChild<QSlider *>(QLatin1String(thresholdSlider));
    auto *ofRows = window.monitorView->findChild<QSlider *>(QLatin1String(thresholdSlider));
    QVERIFY(ofBars && ofRows && ofBars != ofRows);

    ofBars->setValue(111);
    ofRows->setValue(222);
    QCOMPARE(window.settings.value(QStringLiteral("bargraph.displayThreshold")).toInt(), 111);
    QCOMPARE(window.settings.value(QStringLiteral("monitor.displayThreshold")).toInt(), 222);
    QCOMPARE(window.barGraphView->displayThresholdMs(), 111);
    QCOMPARE(window.monitorView->displayThresholdMs(), 222);

    qorvexgraph next;
    QCOMPARE(next.barGraphView->displayThresholdMs(), 111);
    QCOMPARE(next.monitorView->displayThresholdMs(), 222);
}

/// The threshold of the intake follows the tab with the first packet that the tab is given.
void TestBarTab::currentTabGoverns()
{
    AttachedWindow attached;
    qorvexgraph &window = attached.window;
    window.barGraphView->findChild<QSlider *>(QLatin1String(thresholdSlider))->setValue(111);
    window.monitorView->findChild<QSlider *>(QLatin1String(thresholdSlider))->setValue(222);
    QCOMPARE(window.displayThreshold, 50);

    const QByteArray neverLimited = hex("03 21 00");
    attached.library.deliver(7, neverLimited);
    QTRY_COMPARE(window.displayThreshold, 111);
    window.tabs->setCurrentIndex(1);
    QCOMPARE(window.displayThreshold, 111);
    attached.library.deliver(7, neverLimited);
    QTRY_COMPARE(window.displayThreshold, 222);
    // The slider of the other tab does not count.
    window.barGraphView->findChild<QSlider *>(QLatin1String(thresholdSlider))->setValue(333);
    attached.library.deliver(7, neverLimited);
    QTRY_VERIFY(window.packetQueue.empty());
    QCOMPARE(window.displayThreshold, 222);
    window.tabs->setCurrentIndex(0);
    attached.library.deliver(7, neverLimited);
    QTRY_COMPARE(window.displayThreshold, 333);
}

void TestBarTab::hiddenTabGetsNothing()
{
    AttachedWindow attached;
    attached.window.tabs->setCurrentIndex(1);
    attached.library.deliver(7, hex("34 77 0c f4 01"));
    QTRY_VERIFY(attached.window.packetQueue.empty());
    QCOMPARE(attached.view()->voltageRaw, -1);
    attached.window.tabs->setCurrentIndex(0);
    attached.library.deliver(7, hex("34 77 0c f4 01"));
    QTRY_COMPARE(attached.view()->voltageRaw, 500);
}

void TestBarTab::translations()
{
    RecordingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    qorvexgraph window;
    display(window.barGraphView, fullReport());
    display(window.barGraphView, hex("34 77 0c f4 01"));
    window.barGraphView->grab();
    QCoreApplication::removeTranslator(&translator);

    QByteArrayList ofTheView;
    for (const QByteArray &text : qAsConst(translator.asked)) {
        if (text.startsWith("bargraph: "))
            ofTheView += text;
        QVERIFY2(!text.contains("Prox:") && !text.contains("Freq:"), text);
    }
    std::sort(ofTheView.begin(), ofTheView.end());
    QCOMPARE(ofTheView,
             (QByteArrayList{"bargraph: Classic Mode", "bargraph: Fast Computer", "bargraph: Lock Frequency",
                             "bargraph: Min: %1 Max: %2 Delta: %3", "bargraph: Raw: %1",
                             "bargraph: Slow Computer", "bargraph: Volts: %1"}));
    QVERIFY(translator.asked.contains("qorvexgraph: Bar Graph"));
}

PADSCOPE_TESTS(TestBarTab);
#include "tst_bartab.moc"
