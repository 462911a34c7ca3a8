#include <atomic>
#include <cstring>

#include <QMap>
#include <QStandardItemModel>
#include <QTabWidget>

#include "monitor.h"
#include "support/driverlibrary.h"
#include "support/recordingview.h"
#include "support/tests.h"

/// Reports from several threads of the driver at once, while the GUI thread attaches, plugs and detaches.
class ThreadTests : public QObject
{
    Q_OBJECT

private slots:
    void fourThreadsDeliverAtOnce();
    void floodWhileAttachingAndDetaching();
    void floodIntoTheMonitor();
};

namespace {

/// Attaches, lets boards come and go, and detaches, while reports arrive. Each round waits for `arrived`.
template <typename Condition>
void attachPlugAndDetach(qorvexgraph &window, const DriverLibrary &library, Condition arrived)
{
    window.show();
    window.AttachHardware();
    QTRY_VERIFY(arrived());
    library.setBoards({7});
    library->plug();
    QTRY_COMPARE(window.deviceIds, QList<int>({7}));
    library.setBoards({7, 8});
    library->plug();
    QTRY_COMPARE(window.deviceIds, QList<int>({7, 8}));
    library->plug();
    window.close();
    QVERIFY(!window.hardware);
    QCoreApplication::processEvents();
    QVERIFY(!window.hardware);
}

void freePackets(qorvexgraph &window)
{
    qDeleteAll(window.packetQueue);
    window.packetQueue.clear();
}

/// How often a packet came no later than one that the same thread had sent for the same board before it.
int countOutOfOrder(const QVector<_DataPacket> &packets)
{
    QMap<QPair<int, int>, quint32> lastTurns;
    int outOfOrder = 0;
    for (const _DataPacket &packet : packets) {
        const QPair<int, int> sender(packet.device, packet.data.at(2));
        quint32 turn = 0;
        std::memcpy(&turn, packet.data.constData() + 4, sizeof turn);
        if (lastTurns.contains(sender) && turn <= lastTurns.value(sender))
            ++outOfOrder;
        lastTurns[sender] = turn;
    }
    return outOfOrder;
}

} // namespace

void ThreadTests::fourThreadsDeliverAtOnce()
{
    const DriverLibrary library("complete", {7});
    qorvexgraph window;
    auto *view = new RecordingView(&window);
    window.tabs->setCurrentIndex(window.tabs->addTab(view, "Recording"));
    window.AttachHardware();

    for (int turn = 0; turn < 25; ++turn)
        library.deliver(7, QByteArray("\3\x21\1"), 4);
    QCOMPARE(window.packetQueue.size(), std::size_t(100));
    QTRY_COMPARE(view->packets.size(), 100);
    QVERIFY(window.packetQueue.empty());
    window.close();
}

void ThreadTests::floodWhileAttachingAndDetaching()
{
    const DriverLibrary library("complete", {7, 8});
    qorvexgraph window;
    auto *view = new RecordingView(&window);
    window.tabs->setCurrentIndex(window.tabs->addTab(view, "Recording"));
    // Without a receiver, and so on the driver's threads, while the window's own slot hears it later.
    std::atomic<int> announced{0};
    connect(&window, &qorvexgraph::DataReceived, [&announced] { ++announced; });

    library->startFlood(4);
    for (int round = 0; round < 10 && !QTest::currentTestFailed(); ++round) {
        const int before = view->packets.size();
        attachPlugAndDetach(window, library, [&] { return view->packets.size() >= before + 20; });
    }
    QVERIFY(library->stopFlood() > 200);
    QVERIFY(!QTest::currentTestFailed());

    // Every packet that was announced has been shown or is queued still, whole and in its thread's order.
    QCOMPARE(view->packets.size() + static_cast<int>(window.packetQueue.size()), announced.load());
    for (const _DataPacket &packet : qAsConst(view->packets)) {
        QCOMPARE(packet.data.size(), 64);
        QCOMPARE(packet.length, 64U);
        QVERIFY(packet.device == 7 || packet.device == 8);
        QCOMPARE(packet.checksum, quint32(qChecksum(packet.data.constData(), 64)));
    }
    QCOMPARE(countOutOfOrder(view->packets), 0);
    freePackets(window);
}

void ThreadTests::floodIntoTheMonitor()
{
    const DriverLibrary library("complete", {7, 8});
    qorvexgraph window;
    window.tabs->setCurrentWidget(window.monitorView);
    int rows = 0;
    connect(window.monitorView->model, &QStandardItemModel::rowsInserted, this, [&rows] { ++rows; });

    library->startFlood(4);
    for (int round = 0; round < 5 && !QTest::currentTestFailed(); ++round) {
        const int before = rows;
        attachPlugAndDetach(window, library, [&] { return rows >= before + 20; });
    }
    library->stopFlood();
    QVERIFY(rows >= 100);
    freePackets(window);
}

PADSCOPE_TESTS(ThreadTests);
#include "tst_threads.moc"
