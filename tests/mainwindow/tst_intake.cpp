#include <QSignalSpy>
#include <QTabWidget>

#include "support/driverlibrary.h"
#include "support/recordingview.h"
#include "support/testclock.h"
#include "support/tests.h"

/// What becomes of a report: the packet, the queue and the hand-off to a view.
class IntakeTests : public QObject
{
    Q_OBJECT

private slots:
    void packetHoldsTheReport();
    void packetIsACopy();
    void checksums_data();
    void checksums();
    void missingTypeByteIsZero_data();
    void missingTypeByteIsZero();
    void secondByteIsTheType();
    void pausedDropsEverything();
    void viewOnTheCurrentTabGetsThePackets();
    void thresholdIsThatOfTheViewLastShown();
    void packetsOfOtherTabsAreDropped_data();
    void packetsOfOtherTabsAreDropped();
    void packetsWaitWhileDetached();
    void packetsAreShownInOrderOfArrival();
    void packetsThatArriveMeanwhileWait();
    void extraDeliveriesFindAnEmptyQueue();
    void destructorLeavesQueuedPackets();
};

namespace {

/// A window that takes reports in without a driver, and leaves them queued.
class ReceivingWindow : public qorvexgraph
{
public:
    ReceivingWindow() { paused = false; }
    ~ReceivingWindow() override { qDeleteAll(packetQueue); }

    void receive(int device, const QByteArray &report)
    {
        DataCallback(device, reinterpret_cast<const unsigned char *>(report.constData()),
                     static_cast<unsigned int>(report.size()), this);
    }
};

/// A window that is attached to board 7 and shows a view that records.
class AttachedWindow : public qorvexgraph
{
public:
    AttachedWindow()
        : library("complete")
        , view(new RecordingView(this))
    {
        library.setBoards({7});
        tabs->setCurrentIndex(tabs->addTab(view, "Recording"));
        AttachHardware();
    }
    ~AttachedWindow() override
    {
        close();
        qDeleteAll(packetQueue);
    }

    const DriverLibrary library;
    RecordingView *const view;
};

/// A report that is always kept, and told apart by its third byte.
QByteArray report(int number)
{
    return QByteArray("\3\x21", 2) + static_cast<char>(number);
}

QByteArrayList shownReports(const RecordingView &view)
{
    QByteArrayList reports;
    for (const _DataPacket &packet : view.packets)
        reports += packet.data;
    return reports;
}

} // namespace

void IntakeTests::packetHoldsTheReport()
{
    ReceivingWindow window;
    testclock::stopAt(QTime(1, 2, 3, 456));
    window.receive(-2147483647, QByteArray("\5\x21\0\xff\1", 5));
    QCOMPARE(window.packetQueue.size(), std::size_t(1));
    const _DataPacket &packet = *window.packetQueue.front();
    QCOMPARE(packet.data, QByteArray("\5\x21\0\xff\1", 5));
    QCOMPARE(packet.length, 5U);
    QCOMPARE(packet.device, -2147483647);
    QCOMPARE(packet.time, QTime(1, 2, 3, 456));
}

void IntakeTests::packetIsACopy()
{
    ReceivingWindow window;
    unsigned char bytes[] = {3, 33, 1};
    qorvexgraph::DataCallback(1, bytes, sizeof bytes, &window);
    bytes[2] = 99;
    QCOMPARE(window.packetQueue.front()->data, QByteArray("\3\x21\1"));
}

void IntakeTests::checksums_data()
{
    addColumns<QByteArray, quint32>("bytes", "checksum");
    // CRC-16 of ISO 3309: polynomial 1021 (hex), reflected, begun with FFFF, complemented at the end.
    addRow("the digits 1 to 9", QByteArray("123456789"), 0x906EU);
    addRow("no byte", QByteArray(), 0x0000U);
    addRow("a zero", QByteArray("\0", 1), 0xF078U);
    addRow("five bytes", QByteArray("\5\x21\0\xff\1", 5), 0x9482U);
    addRow("64 zeros", QByteArray(64, '\0'), 0xA494U);
}

void IntakeTests::checksums()
{
    QFETCH(QByteArray, bytes);
    ReceivingWindow window;
    window.receive(1, bytes);
    QTEST(window.packetQueue.front()->checksum, "checksum");
}

void IntakeTests::missingTypeByteIsZero_data()
{
    addColumns<bool, int>("isNull", "length");
    addRow("null, no length", true, 0);
    addRow("null, with a length", true, 5);
    addRow("no byte", false, 0);
    addRow("one byte", false, 1);
}

void IntakeTests::missingTypeByteIsZero()
{
    QFETCH(bool, isNull);
    QFETCH(int, length);
    ReceivingWindow window;
    testclock::stopAt(QTime(12, 0));
    window.receive(1, QByteArray("\2\x32", 2));
    // The byte after the end would be that of a type which is dropped now.
    const unsigned char bytes[] = {2, 104};
    qorvexgraph::DataCallback(1, isNull ? nullptr : bytes, static_cast<unsigned int>(length), &window);

    QCOMPARE(window.packetQueue.size(), std::size_t(2));
    const _DataPacket &packet = *window.packetQueue.back();
    QCOMPARE(packet.length, static_cast<quint32>(length));
    QCOMPARE(packet.data.size(), isNull ? 0 : length);
}

void IntakeTests::secondByteIsTheType()
{
    ReceivingWindow window;
    testclock::stopAt(QTime(12, 0));
    window.receive(1, QByteArray("\2\x32", 2));
    window.receive(1, QByteArray("\2\x68", 2));
    QCOMPARE(window.packetQueue.size(), std::size_t(1));
}

void IntakeTests::pausedDropsEverything()
{
    ReceivingWindow window;
    window.paused = true;
    QSignalSpy received(&window, SIGNAL(DataReceived()));
    for (int type = 0; type <= 255; ++type)
        window.receive(1, QByteArray("\3") + static_cast<char>(type) + '\0');
    QVERIFY(window.packetQueue.empty());
    QCOMPARE(received.count(), 0);

    window.paused = false;
    window.receive(1, report(1));
    QCOMPARE(window.packetQueue.size(), std::size_t(1));
    QCOMPARE(received.count(), 1);
}

void IntakeTests::viewOnTheCurrentTabGetsThePackets()
{
    AttachedWindow window;
    auto *other = new RecordingView(&window);
    window.tabs->addTab(other, "Other");
    window.library.deliver(7, report(1));
    QCOMPARE(shownReports(*window.view), QByteArrayList({report(1)}));
    QCOMPARE(window.view->packets.first().device, 7);
    QVERIFY(window.packetQueue.empty());

    window.tabs->setCurrentWidget(other);
    window.library.deliver(7, report(2));
    QCOMPARE(shownReports(*window.view), QByteArrayList({report(1)}));
    QCOMPARE(shownReports(*other), QByteArrayList({report(2)}));
}

void IntakeTests::thresholdIsThatOfTheViewLastShown()
{
    AttachedWindow window;
    window.view->displayThreshold = 77;
    QCOMPARE(window.displayThreshold, 50);
    window.library.deliver(7, report(1));
    QCOMPARE(window.displayThreshold, 77);
    window.view->displayThreshold = 78;
    QCOMPARE(window.displayThreshold, 77);
    window.library.deliver(7, report(2));
    QCOMPARE(window.displayThreshold, 78);
}

void IntakeTests::packetsOfOtherTabsAreDropped_data()
{
    QTest::addColumn<bool>("anyTab");
    addRow("the tab holds no view", true);
    addRow("there is no tab", false);
}

void IntakeTests::packetsOfOtherTabsAreDropped()
{
    QFETCH(bool, anyTab);
    AttachedWindow window;
    if (anyTab)
        window.tabs->setCurrentIndex(window.tabs->addTab(new QWidget, "Plain"));
    else
        window.tabs->clear();
    window.library.deliver(7, report(1));
    QVERIFY(window.packetQueue.empty());
    QVERIFY(window.view->packets.isEmpty());
    QCOMPARE(window.displayThreshold, 50);
}

void IntakeTests::packetsWaitWhileDetached()
{
    AttachedWindow window;
    // From another thread the signal is queued; the detach comes first.
    window.library.deliver(7, report(1), 1);
    window.detachFromHardware();
    QCoreApplication::processEvents();
    window.OnDataReceived();
    QCOMPARE(window.packetQueue.size(), std::size_t(1));
    QVERIFY(window.view->packets.isEmpty());

    window.AttachHardware();
    window.library.deliver(7, report(2));
    QCOMPARE(shownReports(*window.view), QByteArrayList({report(1), report(2)}));
}

void IntakeTests::packetsAreShownInOrderOfArrival()
{
    AttachedWindow window;
    for (int i = 1; i <= 5; ++i)
        window.library.deliver(7, report(i), 1);
    QVERIFY(window.view->packets.isEmpty());
    QCOMPARE(window.packetQueue.size(), std::size_t(5));
    QTRY_COMPARE(window.view->packets.size(), 5);
    QCOMPARE(shownReports(*window.view),
             QByteArrayList({report(1), report(2), report(3), report(4), report(5)}));
}

void IntakeTests::packetsThatArriveMeanwhileWait()
{
    AttachedWindow window;
    window.view->onDisplay = [&window] {
        if (window.view->packets.size() == 1)
            window.library.deliver(7, report(9), 1);
    };
    window.library.deliver(7, report(1), 1);
    window.library.deliver(7, report(2), 1);
    window.OnDataReceived();
    QCOMPARE(shownReports(*window.view), QByteArrayList({report(1), report(2)}));
    QCOMPARE(window.packetQueue.size(), std::size_t(1));
    QTRY_COMPARE(shownReports(*window.view), QByteArrayList({report(1), report(2), report(9)}));
}

void IntakeTests::extraDeliveriesFindAnEmptyQueue()
{
    AttachedWindow window;
    window.AttachHardware();
    window.AttachHardware();
    QSignalSpy received(&window, SIGNAL(DataReceived()));
    window.library.deliver(7, report(1));
    QCOMPARE(received.count(), 1);
    QCOMPARE(shownReports(*window.view), QByteArrayList({report(1)}));
}

void IntakeTests::destructorLeavesQueuedPackets()
{
    _DataPacket *packet = nullptr;
    {
        qorvexgraph window;
        window.paused = false;
        const unsigned char bytes[] = {3, 33, 1};
        qorvexgraph::DataCallback(1, bytes, sizeof bytes, &window);
        packet = window.packetQueue.front();
    }
    // Still there to be read, which the address sanitizer confirms.
    QCOMPARE(packet->data, QByteArray("\3\x21\1"));
    delete packet;
}

PADSCOPE_TESTS(IntakeTests);
#include "tst_intake.moc"
