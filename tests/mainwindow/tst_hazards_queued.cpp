#include <QTimer>

#include "mainwindow/testwindow.h"

/// What is queued for a window at a detach, and what two windows do at the same time: none takes what is
/// another's.
class QueuedHazards : public QObject
{
    Q_OBJECT

private slots:
    void callsQueuedByTheHostAreMade();
    void libraryThatNotifiesOfEveryAttach();
    void notificationOfOneWindowInsideTheAttachOfAnother();
    void reportOfOneWindowInsideTheDispatchesOfAnother();
    void exceptionPassesTheDeepestDispatch();
};

namespace {

const QByteArray queuedReport("\x04\x21zz");

} // namespace

void QueuedHazards::callsQueuedByTheHostAreMade()
{
    AttachedWindow window;
    window.show();
    QMetaObject::invokeMethod(&window, "show", Qt::QueuedConnection);
    window.hide();
    QVERIFY(!window.isVisible());
    QCoreApplication::processEvents();
    QVERIFY(window.isVisible());
}

void QueuedHazards::libraryThatNotifiesOfEveryAttach()
{
    TestWindow window;
    const ObservedCalls observed(window.library, [&](const QString &call) {
        if (call.startsWith("orvexSetXferMask"))
            qorvexgraph::pnp(&window);
    });
    window.AttachHardware();
    // Everything else goes on.
    bool isTimeLeft = false;
    QTimer::singleShot(20, &window, [&isTimeLeft] { isTimeLeft = true; });
    QTRY_VERIFY(isTimeLeft);
    window.detach();
    QVERIFY(Inspect::isDetached(window));
}

void QueuedHazards::notificationOfOneWindowInsideTheAttachOfAnother()
{
    TestWindow inner;
    TestWindow outer;
    const InsideCall observed(outer.library, "orvexSetXferMask", [&] {
        qorvexgraph::pnp(&outer);
        inner.AttachHardware();
        outer.library.setBoards({1, 2});
    });
    outer.AttachHardware();
    QTRY_COMPARE(Inspect::deviceIds(outer), QList<int>({1, 2}));
    QCOMPARE(Inspect::deviceIds(inner), QList<int>({1}));
}

void QueuedHazards::reportOfOneWindowInsideTheDispatchesOfAnother()
{
    TestWindow inner;
    AttachedWindow outer;
    inner.AttachHardware();
    const RecordingView *innerView = inner.showRecordingView();
    RecordingView *outerView = outer.showRecordingView();
    outerView->onDisplay = [&] {
        if (outerView->packets.size() <= 4)
            outer.library.deliver(1, queuedReport);
    };
    outer.library.deliver(1, queuedReport);
    // Four dispatches are the max: the fifth report waits, but only in the outer window.
    QCOMPARE(outerView->packets.size(), 4);
    QCOMPARE(Inspect::packetQueue(outer).size(), std::size_t(1));
    QCOMPARE(innerView->packets.size(), 5);
    QVERIFY(Inspect::packetQueue(inner).empty());
    QTRY_COMPARE(outerView->packets.size(), 5);
}

void QueuedHazards::exceptionPassesTheDeepestDispatch()
{
    AttachedWindow window;
    RecordingView *view = window.showRecordingView();
    int shown = 0;
    view->onDisplay = [&] {
        const bool isDeepest = ++shown == 4;
        if (shown <= 4)
            window.library.deliver(1, queuedReport);
        if (isDeepest)
            throw HostError();
    };
    QVERIFY_EXCEPTION_THROWN(window.library.deliver(1, queuedReport), HostError);
    QCOMPARE(shown, 4);
    // The answer to the fourth waits until all have returned.
    QCOMPARE(Inspect::packetQueue(window).size(), std::size_t(1));
    QTRY_COMPARE(shown, 5);
    window.library.deliver(1, queuedReport);
    QCOMPARE(shown, 6);
    QVERIFY(Inspect::packetQueue(window).empty());
}

PADSCOPE_TESTS(QueuedHazards);
#include "tst_hazards_queued.moc"
