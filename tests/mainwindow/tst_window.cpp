#include <QDir>
#include <QMetaMethod>
#include <QVBoxLayout>

#include "mainwindow/testwindow.h"
#include "support/markingtranslator.h"

namespace {

struct View : qorvexwidget
{
    using qorvexwidget::graph;
    using qorvexwidget::qorvexwidget;
    using qorvexwidget::settings;

    void Display(_DataPacket *) override {}
};

/// "signal DataReceived()" and so on, for what the class itself declares.
QStringList ownMethods(const QMetaObject &metaObject)
{
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        const char *kind = method.methodType() == QMetaMethod::Signal ? "signal " : "slot ";
        methods += QLatin1String(kind) + QString::fromLatin1(method.methodSignature());
    }
    return methods;
}

} // namespace

/// The window as it stands after its construction.
class WindowTests : public QObject
{
    Q_OBJECT

private slots:
    void startsDetached();
    void arrangesStatusTabsAndCommandLine();
    void textsThatAreTranslated();
    void commandLineHasFocus();
    void declaresSignalsAndSlotsInOrder();
    void viewKnowsItsWindow();
};

void WindowTests::startsDetached()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    QCOMPARE(library.takeCalls(), QStringList());
    QVERIFY(Inspect::isDetached(window));
    QCOMPARE(Inspect::deviceIds(window), QList<int>());
    QVERIFY(Inspect::packetQueue(window).empty());
    QCOMPARE(Inspect::displayThreshold(window), 50);
    QCOMPARE(statusOf(window), QString("Devices found"));
    QCOMPARE(window.settingsStore()->fileName(), QDir::homePath() + "/config/Corvane/qorvexgraph.conf");
}

void WindowTests::arrangesStatusTabsAndCommandLine()
{
    TestWindow window;
    auto *layout = qobject_cast<QVBoxLayout *>(window.layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 4);
    auto *top = qobject_cast<QHBoxLayout *>(layout->itemAt(0)->layout());
    QVERIFY(top);
    QCOMPARE(top->count(), 0);
    QCOMPARE(layout->itemAt(1)->widget(), statusLabelOf(window));
    QCOMPARE(layout->itemAt(2)->widget(), window.tabs);
    QCOMPARE(layout->itemAt(3)->widget(), window.commandLine);
    QCOMPARE(window.tabs->minimumSize(), QSize(300, 200));
    QVERIFY(!window.parent());

    QCOMPARE(window.tabs->count(), 2);
    QCOMPARE(window.tabs->indexOf(window.monitorView), 1);
    QCOMPARE(window.tabs->tabText(0), QString("Bar Graph"));
    QCOMPARE(window.tabs->tabText(1), QString("Monitor"));
}

void WindowTests::textsThatAreTranslated()
{
    const MarkingTranslator translator;
    const TestWindow window;
    QCOMPARE(window.tabs->tabText(0), QString("{qorvexgraph: Bar Graph}"));
    QCOMPARE(window.tabs->tabText(1), QString("{qorvexgraph: Monitor}"));
    // Not this one.
    QCOMPARE(statusOf(window), QString("Devices found"));
}

void WindowTests::commandLineHasFocus()
{
    TestWindow window;
    QCOMPARE(window.focusWidget(), window.commandLine);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(window.commandLine->hasFocus());
}

void WindowTests::declaresSignalsAndSlotsInOrder()
{
    const QStringList expected{
        "signal DataReceived()", "signal PnpHappened()",  "slot AttachHardware()",
        "slot TypedCommand()",   "slot OnDataReceived()", "slot ShowDevices()",
    };
    QCOMPARE(ownMethods(qorvexgraph::staticMetaObject), expected);
    QCOMPARE(ownMethods(qorvexwidget::staticMetaObject), QStringList());
    QCOMPARE(ownMethods(QLineUpDownEdit::staticMetaObject), QStringList());
}

void WindowTests::viewKnowsItsWindow()
{
    qorvexgraph window;
    const View view(&window);
    QCOMPARE(view.graph, &window);
    QCOMPARE(view.settings, window.settingsStore());
    QVERIFY(!view.parent());

    const View withoutWindow;
    QVERIFY(!withoutWindow.graph);
    QVERIFY(!withoutWindow.settings);
}

PADSCOPE_TESTS(WindowTests);
#include "tst_window.moc"
