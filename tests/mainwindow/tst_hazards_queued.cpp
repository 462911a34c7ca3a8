#include <QLabel>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimer>

#include "mainwindow/datapacket.h"
#include "mainwindow/qorvexgraph.h"
#include "monitor/monitor.h"
#include "tests/support/observedcalls.h"
#include "tests/support/testmain.h"

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
    void reportOfOneWindowInsideTheHandOffsOfAnother();
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

void QueuedHazards::reportOfOneWindowInsideTheHandOffsOfAnother()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph outer;
    outer.AttachHardware();
    qorvexgraph inner;
    showMonitor(inner);
    inner.AttachHardware();
    outer.handOffDepth = 4; // as deep as hand-offs go
    library.deliver(1, rawReport);
    QCOMPARE(rowsOf(inner), QStringList{".!ab   04 21 61 62 "});
    QVERIFY(inner.packetQueue.empty());
    QCOMPARE(outer.packetQueue.size(), std::size_t(1));
    outer.handOffDepth = 0;
    outer.detachFromHardware();
    inner.detachFromHardware();
    qDeleteAll(std::exchange(outer.packetQueue, {}));
}

PADSCOPE_TEST_MAIN(QueuedHazards)
#include "tst_hazards_queued.moc"
