#include <QLabel>
#include <QTimer>

#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/observedcalls.h"
#include "support/tests.h"

using Call = void (*)(qorvexgraph &);
Q_DECLARE_METATYPE(Call)

/// Boards that come and go, which a thread of the driver tells.
class PlugAndPlayTests : public QObject
{
    Q_OBJECT

private slots:
    void noticeIsHandledOnTheGuiThread();
    void noticeStillQueuedAtDetachIsDropped_data();
    void noticeStillQueuedAtDetachIsDropped();
    void noticeAfterADetachIsIgnored_data();
    void noticeAfterADetachIsIgnored();
    void noticeAfterAnAttachThatWasBrokenOffIsIgnored();
    void noticeReachesTheOtherWindows();
    void noticeAttachesAWindowThatNeverWas_data();
    void noticeAttachesAWindowThatNeverWas();
    void callOfTheSlotAlwaysAttaches_data();
    void callOfTheSlotAlwaysAttaches();
};

void PlugAndPlayTests::noticeIsHandledOnTheGuiThread()
{
    const DriverLibrary library("complete", {11});
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();

    library.setBoards({11, 12});
    library->plug();
    // The driver's thread has come and gone, and nothing happened on it.
    QCOMPARE(library.takeCalls(), QStringList());
    QCOMPARE(window.deviceIds, QList<int>({11}));
    QTRY_COMPARE(window.deviceIds, QList<int>({11, 12}));
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>2 devices found.</b>"));

    library.setBoards({});
    library->plug();
    QTRY_COMPARE(window.statusLabel->text(), QStringLiteral("<i>No device found.</i>"));
    window.close();
}

void PlugAndPlayTests::noticeStillQueuedAtDetachIsDropped_data()
{
    QTest::addColumn<bool>("close");
    addRow("closed", true);
    addRow("hidden", false);
}

void PlugAndPlayTests::noticeStillQueuedAtDetachIsDropped()
{
    QFETCH(bool, close);
    const DriverLibrary library("complete", {11});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    library->plug();
    if (close)
        window.close();
    else
        window.hide();
    library.takeCalls();

    QCoreApplication::processEvents();
    QCOMPARE(library.takeCalls(), QStringList());
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

void PlugAndPlayTests::noticeAfterADetachIsIgnored_data()
{
    addColumns<bool, bool>("close", "ownThread");
    addRow("closed; on the caller's own thread", true, true);
    addRow("closed; on another thread", true, false);
    addRow("hidden; on the caller's own thread", false, true);
    addRow("hidden; on another thread", false, false);
}

void PlugAndPlayTests::noticeAfterADetachIsIgnored()
{
    QFETCH(bool, close);
    QFETCH(bool, ownThread);
    // Keeps the library loaded, with the callbacks that it knows.
    const DriverLibrary library("complete", {11});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    if (close)
        window.close();
    else
        window.hide();
    library.takeCalls();

    for (int notices = 0; notices < 2; ++notices) {
        if (ownThread)
            qorvexgraph::pnp(&window);
        else
            library->plug();
        QTest::qWait(10); // longer than a repeated attach waits
    }
    QCOMPARE(library.takeCalls(), QStringList());
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b> <i>Paused</i>"));

    window.AttachHardware();
    library.setBoards({11, 12});
    library->plug();
    QTRY_COMPARE(window.deviceIds, QList<int>({11, 12}));
    window.close();
}

void PlugAndPlayTests::noticeAfterAnAttachThatWasBrokenOffIsIgnored()
{
    const DriverLibrary library("complete", {11});
    qorvexgraph window;
    window.show();
    {
        const ObservedCalls observed(library, [&](const QString &call) {
            if (call == QLatin1String("orvexAttach()"))
                window.close();
        });
        window.AttachHardware();
    }
    QVERIFY(!window.hardware);
    library.takeCalls();
    qorvexgraph::pnp(&window);
    QCOMPARE(library.takeCalls(), QStringList());
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

void PlugAndPlayTests::noticeReachesTheOtherWindows()
{
    const DriverLibrary library("complete", {11});
    qorvexgraph closed;
    closed.AttachHardware();
    qorvexgraph attached;
    attached.AttachHardware();
    closed.close();
    closed.detachFromHardware();

    library.setBoards({11, 12});
    library->plug();
    QTRY_COMPARE(attached.deviceIds, QList<int>({11, 12}));
    QCoreApplication::processEvents();
    QVERIFY(!closed.hardware);
    QVERIFY(closed.paused);
    attached.detachFromHardware();
}

void PlugAndPlayTests::noticeAttachesAWindowThatNeverWas_data()
{
    addColumns<bool, bool>("shown", "hidden");
    addRow("never shown", false, false);
    addRow("shown", true, false);
    addRow("shown, then hidden", true, true);
}

void PlugAndPlayTests::noticeAttachesAWindowThatNeverWas()
{
    QFETCH(bool, shown);
    QFETCH(bool, hidden);
    const DriverLibrary library("complete", {11});
    qorvexgraph window;
    if (shown)
        window.show();
    if (hidden)
        window.hide();

    emit window.PnpHappened();
    const QStringList calls = library.takeCalls();
    QCOMPARE(calls.size(), 6);
    QCOMPARE(calls.first(), QStringLiteral("orvexAttach()"));
    QVERIFY(calls.at(1).startsWith("orvexSetPnpCallback("));
    QVERIFY(calls.last().startsWith("orvexSetCallback(11, "));
    QVERIFY(!window.paused);
    window.detachFromHardware();
}

void PlugAndPlayTests::callOfTheSlotAlwaysAttaches_data()
{
    QTest::addColumn<Call>("call");
    addRow("plain", Call([](qorvexgraph &window) { window.AttachHardware(); }));
    addRow("queued", Call([](qorvexgraph &window) {
               QMetaObject::invokeMethod(&window, "AttachHardware", Qt::QueuedConnection);
           }));
    addRow("through a timer of the host",
           Call([](qorvexgraph &window) { QTimer::singleShot(1, &window, SLOT(AttachHardware())); }));
    addRow("through another signal of the window", Call([](qorvexgraph &window) {
               connect(&window, SIGNAL(windowTitleChanged(QString)), &window, SLOT(AttachHardware()));
               window.setWindowTitle("title");
           }));
    addRow("a typed command", Call([](qorvexgraph &window) {
               window.commandLine->setText("A");
               QTest::keyClick(window.commandLine, Qt::Key_Return);
           }));
}

void PlugAndPlayTests::callOfTheSlotAlwaysAttaches()
{
    QFETCH(Call, call);
    const DriverLibrary library("complete", {11});
    qorvexgraph window;
    window.AttachHardware();
    window.detachFromHardware();
    call(window);
    QTRY_VERIFY(window.hardware);
    QVERIFY(!window.paused);
    window.detachFromHardware();
}

PADSCOPE_TESTS(PlugAndPlayTests);
#include "tst_plugandplay.moc"
