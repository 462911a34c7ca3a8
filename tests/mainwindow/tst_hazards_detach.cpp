#include "mainwindow/testwindow.h"

/// What the driver library does inside the calls of a detach.
class DetachHazards : public QObject
{
    Q_OBJECT

private slots:
    void notificationInsideDetach_data();
    void notificationInsideDetach();
    void reportInsideTheLastDetach();
    void reportOfAThreadInsideTheLastDetach();
    void actionInsideDetach_data();
    void actionInsideDetach();
    void closingCommandsAreSentOnce();
};

namespace {

const QByteArray rawReport("\x04\x21zz");

} // namespace

void DetachHazards::notificationInsideDetach_data()
{
    addColumns<QString, int, bool, bool>("call", "number", "ownThread", "queued");
    const QString closingMode = "orvexSetDriverDebugMode(1, 1, 4294967295)";
    const QString command = "orvexSendCommand(1, \":MDP0\\x0d\")";
    const QString detach = "orvexDetach()";
    addRow("debug mode, on the caller's own thread", closingMode, 1, true, false);
    addRow("debug mode, through an event loop in the call", closingMode, 1, false, false);
    addRow("command, on the caller's own thread", command, 1, true, false);
    addRow("command, through an event loop in the call", command, 1, false, false);
    addRow("first orvexDetach, on the caller's own thread", detach, 1, true, false);
    addRow("first orvexDetach, through an event loop in the call", detach, 1, false, false);
    addRow("last orvexDetach, on the caller's own thread", detach, 2, true, false);
    addRow("last orvexDetach, through an event loop in the call", detach, 2, false, false);
    addRow("last orvexDetach, when hidden by a queued call", detach, 2, true, true);
}

void DetachHazards::notificationInsideDetach()
{
    QFETCH(QString, call);
    QFETCH(int, number);
    QFETCH(bool, ownThread);
    QFETCH(bool, queued);
    AttachedWindow window;
    window.show();
    const auto notify = [&] {
        window.notify(ownThread);
        if (!ownThread)
            QCoreApplication::processEvents();
    };
    const InsideCall observed(window.library, call, notify, number);
    if (queued)
        QMetaObject::invokeMethod(&window, "hide", Qt::QueuedConnection);
    else
        QVERIFY(window.close());
    QTest::qWait(10); // longer than a repeated attach waits
    QVERIFY(observed.callCount() >= number);
    QCOMPARE(window.library.takeCalls(), callsOfADetach());
    QVERIFY(Inspect::isDetached(window));
    QCOMPARE(statusOf(window), QString("<b>1 device found.</b> <i>Paused</i>"));
}

// The binding is there until its destruction has ended, so the report is shown at once like any other on the
// caller's thread, and doesn't stand in the queue until the next attach.
void DetachHazards::reportInsideTheLastDetach()
{
    AttachedWindow window;
    const RecordingView *view = window.showRecordingView();
    QByteArrayList shown;
    const auto deliver = [&] {
        window.library.deliver(1, rawReport);
        shown = view->reports();
    };
    const InsideCall observed(window.library, "orvexDetach()", deliver, 2);
    window.detach();
    QCOMPARE(shown, QByteArrayList{rawReport});
    QVERIFY(Inspect::packetQueue(window).empty());
}

// Its signal arrives when the window is detached, and so it does wait for the next attach.
void DetachHazards::reportOfAThreadInsideTheLastDetach()
{
    AttachedWindow window;
    const RecordingView *view = window.showRecordingView();
    const InsideCall observed(
        window.library, "orvexDetach()", [&] { window.library.deliver(1, rawReport, 1); }, 2);
    window.detach();
    QCoreApplication::processEvents();
    QCOMPARE(view->reports(), QByteArrayList());
    QCOMPARE(Inspect::packetQueue(window).size(), std::size_t{1});

    window.AttachHardware();
    window.library.deliver(1, rawReport);
    QCOMPARE(view->reports(), QByteArrayList({rawReport, rawReport}));
}

void DetachHazards::actionInsideDetach_data()
{
    addColumns<QString, int, QStringList>("inside", "number", "sent");
    addRow("direct call, in the first orvexDetach", "attach", 1, QStringList());
    addRow("direct call, in that of the binding's destruction", "attach", 2, QStringList());
    addRow("direct call, then a close", "attach close", 1, QStringList());
    // There is a binding, so the command takes the usual way, and nothing attaches again.
    const QStringList command("orvexSendCommand(1, \"A\\x0d\")");
    addRow("command, in the first orvexDetach", "A", 1, command);
    addRow("command, in that of the binding's destruction", "A", 2, command);
}

void DetachHazards::actionInsideDetach()
{
    QFETCH(QString, inside);
    QFETCH(int, number);
    QFETCH(QStringList, sent);
    AttachedWindow window;
    window.show();
    const InsideCall observed(
        window.library, "orvexDetach()", [&] { window.perform(inside); }, number);
    window.hide();
    QTest::qWait(10); // longer than a repeated attach waits
    const QStringList expected = callsOfADetach();
    QCOMPARE(window.library.takeCalls(), expected.mid(0, 3 + number) + sent + expected.mid(3 + number));
    QVERIFY(Inspect::isDetached(window));
    QCOMPARE(statusOf(window), QString("<b>1 device found.</b> <i>Paused</i>"));
}

void DetachHazards::closingCommandsAreSentOnce()
{
    AttachedWindow window({1, 2});
    window.show();
    const ObservedCalls observed(window.library, [&](const QString &) { window.detach(); });
    window.hide();
    QCOMPARE(window.library.takeCalls(), callsOfADetach({1, 2}));
    QVERIFY(Inspect::isDetached(window));
}

PADSCOPE_TESTS(DetachHazards);
#include "tst_hazards_detach.moc"
