#include <atomic>
#include <cstring>
#include <QMap>

#include "mainwindow/testwindow.h"

/// Reports from several threads of the driver library at once, while the GUI thread attaches, plugs and
/// detaches.
class ThreadTests : public QObject
{
    Q_OBJECT

private slots:
    void fourThreadsDeliverAtOnce();
    void floodWhileAttachingAndDetaching();
};

namespace {

/// Attaches, lets boards come and go, and detaches, while reports arrive. Each round waits for `arrived`.
template <typename Condition>
void attachPlugAndDetach(TestWindow &window, Condition arrived)
{
    const DriverLibrary &library = window.library;
    window.show();
    window.AttachHardware();
    QTRY_VERIFY(arrived());
    library.setBoards({7});
    library->plug();
    QTRY_COMPARE(Inspect::deviceIds(window), QList<int>({7}));
    library.setBoards({7, 8});
    library->plug();
    QTRY_COMPARE(Inspect::deviceIds(window), QList<int>({7, 8}));
    library->plug();
    window.close();
    QCoreApplication::processEvents();
    QVERIFY(Inspect::isDetached(window));
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
    AttachedWindow window({7});
    const RecordingView *view = window.showRecordingView();
    for (int turn = 0; turn < 25; ++turn)
        window.library.deliver(7, QByteArray("\3\x21\1"), 4);
    QCOMPARE(Inspect::packetQueue(window).size(), std::size_t(100));
    QTRY_COMPARE(view->packets.size(), 100);
    QVERIFY(Inspect::packetQueue(window).empty());
}

void ThreadTests::floodWhileAttachingAndDetaching()
{
    TestWindow window({7, 8});
    const RecordingView *view = window.showRecordingView();
    // Without a receiver, and so on the driver's threads, while the window's own slot hears it later.
    std::atomic<int> announced{0};
    connect(&window, &qorvexgraph::DataReceived, [&announced] { ++announced; });

    window.library->startFlood(4);
    for (int round = 0; round < 10 && !QTest::currentTestFailed(); ++round) {
        const int before = view->packets.size();
        attachPlugAndDetach(window, [&] { return view->packets.size() >= before + 20; });
    }
    QVERIFY(window.library->stopFlood() > 200);

    // Every packet that was announced has been shown or is queued still, whole and in its thread's order.
    QCOMPARE(view->packets.size() + int(Inspect::packetQueue(window).size()), announced.load());
    for (const _DataPacket &packet : view->packets) {
        QCOMPARE(packet.data.size(), 64);
        QCOMPARE(packet.length, 64U);
        QVERIFY(packet.device == 7 || packet.device == 8);
        QCOMPARE(packet.checksum, quint32(qChecksum(packet.data.constData(), 64)));
    }
    QCOMPARE(countOutOfOrder(view->packets), 0);
}

PADSCOPE_TESTS(ThreadTests);
#include "tst_threads.moc"
