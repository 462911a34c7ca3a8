#include <QSpinBox>

#include "bargraph.h"
#include "mainwindow/testwindow.h"
#include "support/testclock.h"

namespace {

// Full signal reports, up to their frequency word at bytes 37 and 38.
const QByteArray start = "\x28\x2f\1" + QByteArray(34, '\0');
const QByteArray negativeFrequency = start + QByteArray("\xFC\xFF\0", 3); // -4: -225, clamped to 0
const QByteArray positiveFrequency = start + QByteArray("\x08\0\0", 3);   // 8: 450

/// Delivers a report that comes too late for the rate limit.
void deliver(const DriverLibrary &library, const QByteArray &report)
{
    static QTime now(12, 0);
    now = now.addSecs(2);
    testclock::stopAt(now);
    library.deliver(1, report);
}

/// Starts the clock of the rate limit by a text, and shows a frequency.
void showFrequency(const DriverLibrary &library)
{
    deliver(library, "\2\x32");
    deliver(library, positiveFrequency);
}

} // namespace

/// The driver library calls back, or runs the event loop, inside the calls that it receives.
class CallHazards : public QObject
{
    Q_OBJECT

private slots:
    void commandAnsweredOnItsOwnThread();
    void commandsAnsweredWithoutEnd();
    void notificationInsideAttach_data();
    void notificationInsideAttach();
    void closeInside_data();
    void closeInside();
    void closeInsideACommandOfTheBarGraph();
    void libraryStaysMappedWhileInUse();
};

void CallHazards::commandAnsweredOnItsOwnThread()
{
    AttachedWindow window;
    const auto *spinBox = window.findChild<QSpinBox *>();
    showFrequency(window.library);
    QCOMPARE(spinBox->value(), 450);
    window.library.takeCalls();
    const InsideCall answer(window.library, "orvexSendCommand",
                            [&] { deliver(window.library, positiveFrequency); });
    deliver(window.library, negativeFrequency);
    // One command, because the spin box clamped; its answer is shown inside it, and nothing is left over.
    QCOMPARE(window.library.takeCalls(), QStringList("orvexSendCommand(1, \">\")"));
    QVERIFY(Inspect::packetQueue(window).empty());
    QCOMPARE(spinBox->value(), 450);
}

void CallHazards::commandsAnsweredWithoutEnd()
{
    AttachedWindow window;
    for (int i = 0; i < 4; ++i)
        window.AttachHardware(); // each adds a connection
    showFrequency(window.library);
    constexpr int rounds = 2000;
    int commands = 0;
    int depth = 0;
    int maxDepth = 0;
    const ObservedCalls observed(window.library, [&](const QString &call) {
        if (!call.startsWith("orvexSendCommand") || ++commands > rounds)
            return;
        maxDepth = qMax(maxDepth, ++depth);
        // The second makes the spin box clamp again, which sends the next command.
        deliver(window.library, positiveFrequency);
        deliver(window.library, negativeFrequency);
        --depth;
    });
    deliver(window.library, negativeFrequency);
    QVERIFY2(maxDepth < 100, qPrintable(QString::number(maxDepth)));
    QTRY_VERIFY_WITH_TIMEOUT(commands > rounds, 60000);
    QTRY_VERIFY(Inspect::packetQueue(window).empty());
}

void CallHazards::notificationInsideAttach_data()
{
    QTest::addColumn<bool>("ownThread");
    addRow("on the caller's own thread", true);
    addRow("through an event loop in the call", false);
}

void CallHazards::notificationInsideAttach()
{
    QFETCH(bool, ownThread);
    TestWindow window({1, 2});
    int notifications = 0;
    const ObservedCalls observed(window.library, [&](const QString &call) {
        // From the middle of the enumeration.
        if (!call.startsWith("orvexSetXferMask") || ++notifications > 50)
            return;
        window.notify(ownThread);
        if (!ownThread)
            QCoreApplication::processEvents();
    });
    window.AttachHardware();
    QCOMPARE(notifications, 2);
    QTRY_VERIFY(notifications > 50);
    QCoreApplication::processEvents();
    QCOMPARE(Inspect::deviceIds(window), QList<int>({1, 2}));
    QCOMPARE(statusOf(window), QString("<b>2 devices found.</b>"));
}

void CallHazards::closeInside_data()
{
    addColumns<QString, QString, int, QString>("steps", "call", "number", "status");
    const QString none = "<i>No device found.</i> <i>Paused</i>";
    const QString one = "<b>1 device found.</b> <i>Paused</i>";
    const QString two = "<b>2 devices found.</b> <i>Paused</i>";
    // The label shows what was enumerated when the window was closed.
    addRow("attach: attach", "attach", "orvexAttach()", 1, none);
    addRow("attach: hot-plug callback", "attach", "orvexSetPnpCallback", 1, none);
    addRow("attach: count", "attach", "orvexGetDeviceCount()", 1, none);
    addRow("attach: record of a board", "attach", "orvexEnumDeviceInfo(0", 1, none);
    addRow("attach: mask", "attach", "orvexSetXferMask(1", 1, one);
    addRow("attach: data callback", "attach", "orvexSetCallback(1", 1, one);
    addRow("attach: last data callback", "attach", "orvexSetCallback(2", 1, two);
    addRow("second attach: attach", "attach attach", "orvexAttach()", 2, two);
    addRow("second attach: count", "attach attach", "orvexGetDeviceCount()", 2, two);
    addRow("second attach: record of the first board", "attach attach", "orvexEnumDeviceInfo(0", 2, none);
    addRow("second attach: record of the second board", "attach attach", "orvexEnumDeviceInfo(1", 2, one);
    addRow("typed command: attach", "A", "orvexAttach()", 1, none);
    addRow("typed command: debug mode", "A", "orvexSetDriverDebugMode(1, 4, 4294967295)", 1, two);
    addRow("typed command: command", "A", "orvexSendCommand(1, \"A\\x0d\")", 1, two);
    addRow("detach: debug mode", "attach hide", "orvexSetDriverDebugMode(1, 1, 4294967295)", 1, two);
    addRow("detach: first command", "attach hide", "orvexSendCommand(1, \":MDU0\\x0d\")", 1, two);
    addRow("detach: second command", "attach hide", "orvexSendCommand(1, \":MDP0\\x0d\")", 1, two);
    addRow("detach: last command", "attach hide", "orvexSendCommand(2, \":MDP0\\x0d\")", 1, two);
    addRow("detach: detach", "attach hide", "orvexDetach()", 1, two);
}

void CallHazards::closeInside()
{
    QFETCH(QString, steps);
    QFETCH(QString, call);
    QFETCH(int, number);
    TestWindow window({1, 2});
    window.show();
    const InsideCall closing(
        window.library, call, [&] { window.close(); }, number);
    window.perform(steps);
    QVERIFY(closing.callCount() >= number);
    QVERIFY(Inspect::isDetached(window));
    QTEST(statusOf(window), "status");
}

void CallHazards::closeInsideACommandOfTheBarGraph()
{
    AttachedWindow window;
    window.show();
    showFrequency(window.library);
    const InsideCall closing(window.library, "orvexSendCommand(1, \">\")", [&] { window.close(); });
    deliver(window.library, negativeFrequency);
    QCOMPARE(closing.callCount(), 1);
    QVERIFY(Inspect::isDetached(window));
    QVERIFY(Inspect::packetQueue(window).empty());
}

void CallHazards::libraryStaysMappedWhileInUse()
{
    AttachedWindow window;
    window.show();
    static AttachedWindow *toClose;
    static bool isMapped;
    toClose = &window;
    window.library->setObserver([](const char *call) {
        if (QByteArray(call) != "orvexSendCommand(1, \"A\")")
            return;
        toClose->close();
        // This returns into the library, which nobody else holds.
        isMapped = DriverLibrary::isLoaded();
    });
    window.library.close();
    window.SendCommand("A");
    QVERIFY(isMapped);
    QVERIFY(Inspect::isDetached(window));
    QVERIFY(!DriverLibrary::isLoaded());
}

PADSCOPE_TESTS(CallHazards);
#include "tst_hazards_calls.moc"
