#include <QCloseEvent>
#include <QDir>
#include <QWindow>

#include "mainwindow/testwindow.h"
#include "support/otherstore.h"

/// Closing and hiding the window.
class ClosingTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void boardsAreDetached_data();
    void boardsAreDetached();
    void closingAcceptsTheEvent();
    void settingsAreSavedByClosing();
    void minimisingStaysAttached();
};

namespace {

/// Counts how often the window system hides it.
class CountingWindow : public AttachedWindow
{
public:
    int hides = 0;

protected:
    void hideEvent(QHideEvent *event) override
    {
        hides += event->spontaneous();
        AttachedWindow::hideEvent(event);
    }
};

QByteArrayList linesOfStoreFile()
{
    otherStore().sync();
    QFile file(QDir::homePath() + "/config/Corvane/qorvexgraph.conf");
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
}

} // namespace

void ClosingTests::init()
{
    otherStore().clear();
}

void ClosingTests::boardsAreDetached_data()
{
    QTest::addColumn<bool>("close");
    addRow("closed", true);
    addRow("hidden", false);
}

void ClosingTests::boardsAreDetached()
{
    QFETCH(bool, close);
    AttachedWindow window({11, 12});
    window.show();
    window.commandLine->addToHistory("A1");
    QVERIFY(close ? window.close() : (window.hide(), true));
    // Once, though a window that is closed is hidden as well.
    QCOMPARE(window.library.takeCalls(), callsOfADetach({11, 12}));
    QVERIFY(Inspect::isDetached(window));
    QCOMPARE(Inspect::deviceIds(window), QList<int>({11, 12}));
    QCOMPARE(statusOf(window), QString("<b>2 devices found.</b> <i>Paused</i>"));
    QCOMPARE(otherStore().contains("history/0"), close);
    QCOMPARE(otherStore().contains("Log To File"), close);
    window.library.close();
    QVERIFY(!DriverLibrary::isLoaded());
}

void ClosingTests::closingAcceptsTheEvent()
{
    qorvexgraph window;
    QCloseEvent event;
    event.ignore();
    QCoreApplication::sendEvent(&window, &event);
    QVERIFY(event.isAccepted());
}

void ClosingTests::settingsAreSavedByClosing()
{
    TestWindow window;
    window.monitorView->OnChangedFont(QFont("Some Family"));
    window.monitorView->OnChangedFontSize("17");
    window.monitorView->LogToFile(true);
    window.commandLine->addToHistory("A1");
    QCOMPARE(otherStore().allKeys(), QStringList());
    window.close();
    QCOMPARE(otherStore().allKeys(),
             QStringList({"Log To File", "Monitor Font", "Monitor Font Size", "history/0"}));
    const QByteArrayList lines = linesOfStoreFile();
    for (const char *line : {"Monitor%20Font=Some Family", "Monitor%20Font%20Size=17", "Log%20To%20File=true",
                             "[history]", "0=A1"})
        QVERIFY2(lines.contains(line), (QByteArray(line) + " is not in " + lines.join(" | ")).constData());

    window.monitorView->LogToFile(false);
    window.close();
    QVERIFY(linesOfStoreFile().contains("Log%20To%20File=false"));
}

void ClosingTests::minimisingStaysAttached()
{
    CountingWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    // As the window system tells it; the offscreen one never does on its own.
    window.windowHandle()->setWindowState(Qt::WindowMinimized);
    QWindowStateChangeEvent event(Qt::WindowNoState);
    QCoreApplication::sendEvent(window.windowHandle(), &event);
    QVERIFY(window.isMinimized());
    QCOMPARE(window.hides, 1);
    QCOMPARE(window.library.takeCalls(), QStringList());
    QVERIFY(Inspect::isAttached(window));
    QCOMPARE(statusOf(window), QString("<b>1 device found.</b>"));
}

PADSCOPE_TESTS(ClosingTests);
#include "tst_closing.moc"
