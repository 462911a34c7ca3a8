#include <QLabel>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimer>

#include "datapacket.h"
#include "monitor.h"
#include "qorvexgraph.h"
#include "support/observedcalls.h"
#include "support/recordingview.h"
#include "support/tests.h"

/// What is queued for a window at a detach, and what two windows do at the same time: none takes what is
/// another's.
class QueuedHazards : public QObject
{
    Q_OBJECT

private slots:
    void packetsQueuedAtADetachAreShownByTheNextAttach();
    void callsQueuedByTheHostAreMade();
    void noticeAfterTheNextAttachIsHeard();
    void noticeHeardWhileTheLibraryIsUnloaded();
    void libraryThatGivesNoticeOfEveryAttach();
    void noticeOfOneWindowInsideTheAttachOfAnother();
    void reportOfOneWindowInsideTheDispatchesOfAnother();
    void exceptionPassesADispatch();
    void exceptionPassesTheDeepestDispatch();
};

namespace {

const QByteArray rawReport("\x04\x21"
                           "ab",
                           4);

QStringList rowsOf(const qorvexgraph &window)
{
    QStringList rows;
    for (int row = 0; row < window.monitorView->model->rowCount(); ++row)
        rows += window.monitorView->model->item(row)->text();
    return rows;
}

void showMonitor(qorvexgraph &window)
{
    window.tabs->setCurrentWidget(window.monitorView);
}

RecordingView *showRecordingView(qorvexgraph &window)
{
    auto *view = new RecordingView(&window);
    window.tabs->setCurrentIndex(window.tabs->addTab(view, "Recording"));
    return view;
}

/// What a slot of the host's throws, and its notify() catches.
struct HostError
{
};

} // namespace

void QueuedHazards::packetsQueuedAtADetachAreShownByTheNextAttach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    showMonitor(window);
    window.AttachHardware();
    library.deliver(1, rawReport, 1);
    window.detachFromHardware();
    window.AttachHardware();
    QCoreApplication::processEvents();
    QCOMPARE(rowsOf(window), QStringList{".!ab   04 21 61 62 "});
    QVERIFY(window.packetQueue.empty());
    window.detachFromHardware();
}

void QueuedHazards::callsQueuedByTheHostAreMade()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    QMetaObject::invokeMethod(&window, "show", Qt::QueuedConnection);
    window.hide();
    QVERIFY(!window.isVisible());
    QCoreApplication::processEvents();
    QVERIFY(window.isVisible());
}

void QueuedHazards::noticeAfterTheNextAttachIsHeard()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    library->plug();
    window.detachFromHardware();
    window.AttachHardware();
    library.setBoards({1, 2});
    library->plug();
    library.takeCalls();
    QCoreApplication::processEvents();
    QCOMPARE(window.deviceIds, (QList<int>{1, 2}));
    // Attached again, the window hears the older one, too.
    QCOMPARE(library.takeCalls().filter(QStringLiteral("orvexAttach()")).size(), 2);
    window.detachFromHardware();
}

void QueuedHazards::noticeHeardWhileTheLibraryIsUnloaded()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    library->plug();
    int detaches = 0;
    {
        const ObservedCalls observed(library, [&](const QString &call) {
            // The second is that of the binding's destruction.
            if (call == QLatin1String("orvexDetach()") && ++detaches == 2)
                QCoreApplication::processEvents();
        });
        window.detachFromHardware();
    }
    QCOMPARE(detaches, 2);
    QCoreApplication::processEvents();
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

void QueuedHazards::libraryThatGivesNoticeOfEveryAttach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    const ObservedCalls observed(library, [&](const QString &call) {
        if (call.startsWith(QLatin1String("orvexSetXferMask")))
            qorvexgraph::pnp(&window);
    });
    window.AttachHardware();
    // Everything else goes on.
    bool isTimeLeft = false;
    QTimer::singleShot(20, &window, [&isTimeLeft] { isTimeLeft = true; });
    QTRY_VERIFY(isTimeLeft);
    window.detachFromHardware();
    QVERIFY(!window.hardware);
}

void QueuedHazards::noticeOfOneWindowInsideTheAttachOfAnother()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph outer;
    qorvexgraph inner;
    bool isFirst = true;
    {
        const ObservedCalls observed(library, [&](const QString &call) {
            if (!call.startsWith(QLatin1String("orvexSetXferMask")) || !std::exchange(isFirst, false))
                return;
            qorvexgraph::pnp(&outer);
            inner.AttachHardware();
        });
        outer.AttachHardware();
    }
    library.setBoards({1, 2});
    // The notice was the outer window's.
    QTRY_COMPARE(outer.deviceIds, (QList<int>{1, 2}));
    QCOMPARE(inner.deviceIds, QList<int>{1});
    outer.detachFromHardware();
    inner.detachFromHardware();
}

void QueuedHazards::reportOfOneWindowInsideTheDispatchesOfAnother()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph outer;
    outer.AttachHardware();
    qorvexgraph inner;
    showMonitor(inner);
    inner.AttachHardware();
    outer.dispatchDepth = 4; // the max
    library.deliver(1, rawReport);
    QCOMPARE(rowsOf(inner), QStringList{".!ab   04 21 61 62 "});
    QVERIFY(inner.packetQueue.empty());
    QCOMPARE(outer.packetQueue.size(), std::size_t(1));
    outer.dispatchDepth = 0;
    outer.detachFromHardware();
    inner.detachFromHardware();
    qDeleteAll(std::exchange(outer.packetQueue, {}));
}

void QueuedHazards::exceptionPassesADispatch()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    auto *view = showRecordingView(window);
    window.AttachHardware();
    view->onDisplay = [] { throw HostError(); };
    constexpr int rounds = 6; // more than dispatches are deep
    for (int round = 0; round < rounds; ++round)
        QVERIFY_EXCEPTION_THROWN(library.deliver(1, rawReport), HostError);
    QCOMPARE(view->packets.size(), rounds);
    view->onDisplay = nullptr;
    library.deliver(1, rawReport);
    QCOMPARE(view->packets.size(), rounds + 1);
    QVERIFY(window.packetQueue.empty());
    window.detachFromHardware();
}

void QueuedHazards::exceptionPassesTheDeepestDispatch()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    auto *view = showRecordingView(window);
    window.AttachHardware();
    int shown = 0;
    view->onDisplay = [&] {
        const bool isDeepest = ++shown == 4;
        if (shown <= 4)
            library.deliver(1, rawReport);
        if (isDeepest)
            throw HostError();
    };
    QVERIFY_EXCEPTION_THROWN(library.deliver(1, rawReport), HostError);
    QCOMPARE(shown, 4);
    // The answer to the fourth waits until all have returned.
    QCOMPARE(window.packetQueue.size(), std::size_t(1));
    QTRY_COMPARE(shown, 5);
    library.deliver(1, rawReport);
    QCOMPARE(shown, 6);
    QVERIFY(window.packetQueue.empty());
    window.detachFromHardware();
}

PADSCOPE_TESTS(QueuedHazards);
#include "tst_hazards_queued.moc"
