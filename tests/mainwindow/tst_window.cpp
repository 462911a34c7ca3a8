#include <QLabel>
#include <QMetaMethod>
#include <QTabWidget>
#include <QVBoxLayout>

#include "monitor.h"
#include "qlineupdownedit.h"
#include "support/driverlibrary.h"
#include "support/recordingview.h"
#include "support/tests.h"

namespace {

class DefaultView : public qorvexwidget
{
public:
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
    void constructionMakesNoDriverCall();
    void arrangesStatusTabsAndCommandLine();
    void monitorHasATab();
    void commandLineHasFocus();
    void commandLineStartsWithoutHistory();
    void settingsAreTheToolsOwn();
    void declaresSignalsAndSlotsInOrder();
    void connectsTheNoticeOfBoardsOnce();
    void viewKnowsItsWindow();
    void viewWithoutWindowKnowsNothing();
};

void WindowTests::startsDetached()
{
    const qorvexgraph window;
    QVERIFY(window.paused);
    QVERIFY(!window.hardware);
    QVERIFY(window.deviceIds.isEmpty());
    QVERIFY(window.packetQueue.empty());
    QCOMPARE(window.displayThreshold, 50);
    QCOMPARE(window.statusLabel->text(), QStringLiteral("Devices found"));
}

void WindowTests::constructionMakesNoDriverCall()
{
    const DriverLibrary library("complete", {1});
    {
        const qorvexgraph window;
    }
    QCOMPARE(library.takeCalls(), QStringList());
}

void WindowTests::arrangesStatusTabsAndCommandLine()
{
    qorvexgraph window;
    auto *layout = qobject_cast<QVBoxLayout *>(window.layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 4);
    auto *top = qobject_cast<QHBoxLayout *>(layout->itemAt(0)->layout());
    QVERIFY(top);
    QCOMPARE(top->count(), 0);
    QCOMPARE(layout->itemAt(1)->widget(), window.statusLabel);
    QCOMPARE(layout->itemAt(2)->widget(), window.tabs);
    QCOMPARE(layout->itemAt(3)->widget(), window.commandLine);
    QCOMPARE(window.tabs->minimumSize(), QSize(300, 200));
    QVERIFY(!window.parent());
}

void WindowTests::monitorHasATab()
{
    qorvexgraph window;
    const int index = window.tabs->indexOf(window.monitorView);
    QCOMPARE(index, window.tabs->count() - 1);
    QCOMPARE(window.tabs->tabText(index), QStringLiteral("Monitor"));
}

void WindowTests::commandLineHasFocus()
{
    qorvexgraph window;
    QCOMPARE(window.focusWidget(), window.commandLine);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(window.commandLine->hasFocus());
}

void WindowTests::commandLineStartsWithoutHistory()
{
    const qorvexgraph window;
    QVERIFY(window.commandLine->history.isEmpty());
    QCOMPARE(window.commandLine->historyIndex, 0);
    QCOMPARE(window.commandLine->text(), QString());
}

void WindowTests::settingsAreTheToolsOwn()
{
    const qorvexgraph window;
    QCOMPARE(window.settings.organizationName(), QStringLiteral("Corvane"));
    QCOMPARE(window.settings.applicationName(), QStringLiteral("qorvexgraph"));
    QCOMPARE(window.settings.scope(), QSettings::UserScope);
    QCOMPARE(window.settings.format(), QSettings::NativeFormat);
    QCOMPARE(window.settings.fileName(), QDir::homePath() + "/config/Corvane/qorvexgraph.conf");
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

void WindowTests::connectsTheNoticeOfBoardsOnce()
{
    const qorvexgraph window;
    QCOMPARE(window.receivers(SIGNAL(PnpHappened())), 1);
    QCOMPARE(window.receivers(SIGNAL(DataReceived())), 0);
    QCOMPARE(window.commandLine->receivers(SIGNAL(returnPressed())), 1);
}

void WindowTests::viewKnowsItsWindow()
{
    qorvexgraph window;
    const RecordingView view(&window);
    QCOMPARE(view.graph, &window);
    QCOMPARE(view.settings, &window.settings);
    QVERIFY(!view.parent());
    QCOMPARE(window.monitorView->graph, &window);
    QCOMPARE(window.monitorView->settings, &window.settings);
}

void WindowTests::viewWithoutWindowKnowsNothing()
{
    const DefaultView view;
    QVERIFY(!view.graph);
    QVERIFY(!view.settings);
}

PADSCOPE_TESTS(WindowTests);
#include "tst_window.moc"
