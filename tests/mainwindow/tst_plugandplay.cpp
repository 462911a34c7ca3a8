#include <QTimer>

#include "mainwindow/testwindow.h"

using Call = void (*)(TestWindow &);
Q_DECLARE_METATYPE(Call)

/// Boards that come and go, of which a thread of the driver library notifies.
class PlugAndPlayTests : public QObject
{
    Q_OBJECT

private slots:
    void handledOnTheGuiThread();
    void ignoredAfterADetach_data();
    void ignoredAfterADetach();
    void ignoredAfterAnAttachThatWasBrokenOff();
    void reachesTheOtherWindows();
    void attaches_data();
    void attaches();
};

void PlugAndPlayTests::handledOnTheGuiThread()
{
    AttachedWindow window({11});
    window.library.setBoards({11, 12});
    window.library->plug();
    // The driver's thread has come and gone, and nothing happened on it.
    QCOMPARE(window.library.takeCalls(), QStringList());
    QCOMPARE(Inspect::deviceIds(window), QList<int>({11}));
    QTRY_COMPARE(Inspect::deviceIds(window), QList<int>({11, 12}));
    QCOMPARE(statusOf(window), QString("<b>2 devices found.</b>"));

    window.library.setBoards({});
    window.library->plug();
    QTRY_COMPARE(statusOf(window), QString("<i>No device found.</i>"));
}

void PlugAndPlayTests::ignoredAfterADetach_data()
{
    addColumns<bool, bool>("close", "ownThread");
    addRow("closed; on the caller's own thread", true, true);
    addRow("closed; on another thread", true, false);
    addRow("hidden; on the caller's own thread", false, true);
    addRow("hidden; on another thread", false, false);
}

void PlugAndPlayTests::ignoredAfterADetach()
{
    QFETCH(bool, close);
    QFETCH(bool, ownThread);
    AttachedWindow window({11});
    window.show();
    // This one waits in the queue of events when the window detaches.
    window.library->plug();
    if (close)
        window.close();
    else
        window.hide();
    window.library.takeCalls();
    for (int notifications = 0; notifications < 2; ++notifications) {
        QTest::qWait(10); // longer than a repeated attach waits
        QCOMPARE(window.library.takeCalls(), QStringList());
        QVERIFY(Inspect::isDetached(window));
        window.notify(ownThread);
    }
    QTest::qWait(10);
    QCOMPARE(window.library.takeCalls(), QStringList());
    QCOMPARE(statusOf(window), QString("<b>1 device found.</b> <i>Paused</i>"));

    window.AttachHardware();
    window.library.setBoards({11, 12});
    window.library->plug();
    QTRY_COMPARE(Inspect::deviceIds(window), QList<int>({11, 12}));
}

void PlugAndPlayTests::ignoredAfterAnAttachThatWasBrokenOff()
{
    TestWindow window;
    window.show();
    const InsideCall closing(window.library, "orvexAttach()", [&] { window.close(); });
    window.AttachHardware();
    QVERIFY(Inspect::isDetached(window));
    window.library.takeCalls();
    qorvexgraph::pnp(&window);
    QCOMPARE(window.library.takeCalls(), QStringList());
    QVERIFY(Inspect::isDetached(window));
}

void PlugAndPlayTests::reachesTheOtherWindows()
{
    TestWindow closed;
    AttachedWindow attached({11});
    closed.AttachHardware();
    closed.close();

    attached.library.setBoards({11, 12});
    attached.library->plug();
    QTRY_COMPARE(Inspect::deviceIds(attached), QList<int>({11, 12}));
    QCoreApplication::processEvents();
    QVERIFY(Inspect::isDetached(closed));
}

void PlugAndPlayTests::attaches_data()
{
    addColumns<QString, Call>("before", "call");
    const auto notification = Call([](TestWindow &window) { emit window.PnpHappened(); });
    addRow("notification; never shown", "", notification);
    addRow("notification; shown", "show", notification);
    addRow("notification; shown, then hidden", "show hide", notification);
    // A call of the slot does, other than a notification, also after a detach.
    const QString detached = "show attach hide";
    addRow("plain call", detached, Call([](TestWindow &window) { window.AttachHardware(); }));
    addRow("queued call", detached, Call([](TestWindow &window) {
               QMetaObject::invokeMethod(&window, "AttachHardware", Qt::QueuedConnection);
           }));
    addRow("through a timer of the host", detached,
           Call([](TestWindow &window) { QTimer::singleShot(1, &window, SLOT(AttachHardware())); }));
    addRow("through another signal of the window", detached, Call([](TestWindow &window) {
               connect(&window, SIGNAL(windowTitleChanged(QString)), &window, SLOT(AttachHardware()));
               window.setWindowTitle("title");
           }));
}

void PlugAndPlayTests::attaches()
{
    QFETCH(QString, before);
    QFETCH(Call, call);
    TestWindow window;
    window.perform(before);
    QVERIFY(Inspect::isDetached(window));
    window.library.takeCalls();
    call(window);
    QTRY_VERIFY(Inspect::isAttached(window));
    QCOMPARE(window.library.takeCalls().filter("orvexAttach()").size(), 1);
}

PADSCOPE_TESTS(PlugAndPlayTests);
#include "tst_plugandplay.moc"
