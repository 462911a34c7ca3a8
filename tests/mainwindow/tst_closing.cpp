#include <QCloseEvent>
#include <QDir>
#include <QHideEvent>
#include <QLabel>
#include <QWindow>

#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/driverlibrary.h"
#include "support/otherstore.h"
#include "support/tests.h"

/// Closing and hiding the window.
class ClosingTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void closingDetaches();
    void closingAcceptsTheEvent();
    void closingSavesTheMonitorsSettings();
    void savedSettingsStandInTheFile();
    void nothingIsSavedBeforeClosing();
    void hidingDetachesWithoutSaving();
    void hiddenByTheWindowSystemStaysAttached();
    void minimisingStaysAttached();
    void closedWindowCanBeUsedAgain();
};

namespace {

/// Counts how often the window system hides a widget.
class HideCounter : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Hide && event->spontaneous())
            ++count;
        return false;
    }

    int count = 0;
};

QByteArrayList linesOfStoreFile()
{
    otherStore().sync();
    QFile file(QDir::homePath() + "/config/Corvane/qorvexgraph.conf");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll().split('\n');
}

} // namespace

void ClosingTests::init()
{
    otherStore().clear();
}

void ClosingTests::closingDetaches()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    library.takeCalls();
    QVERIFY(window.close());
    // Once, though the window is hidden by that as well.
    const QStringList expected{
        "orvexSetDriverDebugMode(1, 1, 4294967295)",
        "orvexSendCommand(1, \":MDU0\\x0d\")",
        "orvexSendCommand(1, \":MDP0\\x0d\")",
        "orvexDetach()",
        "orvexDetach()",
    };
    QCOMPARE(library.takeCalls(), expected);
    QVERIFY(!window.hardware);
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b> <i>Paused</i>"));
}

void ClosingTests::closingAcceptsTheEvent()
{
    qorvexgraph window;
    QCloseEvent event;
    event.ignore();
    QCoreApplication::sendEvent(&window, &event);
    QVERIFY(event.isAccepted());
}

void ClosingTests::closingSavesTheMonitorsSettings()
{
    qorvexgraph window;
    window.monitorView->monitorFont = QFont(QStringLiteral("Some Family"), 17);
    window.monitorView->logEnabled = true;
    window.close();
    const QSettings store = otherStore();
    QCOMPARE(store.value("Monitor Font"), QVariant("Some Family"));
    QCOMPARE(store.value("Monitor Font Size"), QVariant(17));
    QCOMPARE(store.value("Log To File"), QVariant(true));

    window.monitorView->logEnabled = false;
    window.close();
    QCOMPARE(store.value("Log To File"), QVariant(false));
}

void ClosingTests::savedSettingsStandInTheFile()
{
    qorvexgraph window;
    window.monitorView->monitorFont = QFont(QStringLiteral("Some Family"), 17);
    window.monitorView->logEnabled = true;
    window.commandLine->addToHistory("A1");
    window.close();
    const QByteArrayList lines = linesOfStoreFile();
    for (const char *line : {"Monitor%20Font=Some Family", "Monitor%20Font%20Size=17", "Log%20To%20File=true",
                             "[history]", "0=A1"})
        QVERIFY2(lines.contains(line), (QByteArray(line) + " is not in " + lines.join(" | ")).constData());
}

void ClosingTests::nothingIsSavedBeforeClosing()
{
    qorvexgraph window;
    window.monitorView->OnChangedFontSize("12");
    window.monitorView->LogToFile(true);
    window.commandLine->addToHistory("A1");
    QCOMPARE(otherStore().allKeys(), QStringList());
    window.close();
    const QStringList keys{"Log To File", "Monitor Font", "Monitor Font Size", "history/0"};
    QCOMPARE(otherStore().allKeys(), keys);
}

void ClosingTests::hidingDetachesWithoutSaving()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    window.hide();
    QVERIFY(!window.hardware);
    QCOMPARE(library.takeCalls().filter("orvexDetach()").size(), 2);
    QCOMPARE(otherStore().allKeys(), QStringList());
}

void ClosingTests::hiddenByTheWindowSystemStaysAttached()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();

    QHideEvent spontaneous;
    spontaneous.spont = true;
    window.hideEvent(&spontaneous);
    QVERIFY(window.hardware);
    QVERIFY(!window.paused);
    QCOMPARE(library.takeCalls(), QStringList());
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b>"));

    QHideEvent programmatic;
    window.hideEvent(&programmatic);
    QVERIFY(!window.hardware);
}

void ClosingTests::minimisingStaysAttached()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    HideCounter hides;
    window.installEventFilter(&hides);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.AttachHardware();

    // As the window system tells it; the offscreen one never does on its own.
    window.windowHandle()->setWindowState(Qt::WindowMinimized);
    QWindowStateChangeEvent event(Qt::WindowNoState);
    event.spont = true;
    QCoreApplication::sendEvent(window.windowHandle(), &event);
    QVERIFY(window.isMinimized());
    QCOMPARE(hides.count, 1);
    QVERIFY(window.hardware);
    window.close();
    QVERIFY(!window.hardware);
}

void ClosingTests::closedWindowCanBeUsedAgain()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.show();
    window.close();
    window.show();
    QVERIFY(!window.hardware);
    window.AttachHardware();
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b>"));
    window.close();
}

PADSCOPE_TESTS(ClosingTests);
#include "tst_closing.moc"
