#include <QSignalSpy>

#include "mainwindow/testwindow.h"
#include "support/testclock.h"

/// What becomes of a report: the packet, the queue and the dispatch to a view.
class IntakeTests : public QObject
{
    Q_OBJECT

private slots:
    void packetHoldsTheReport();
    void checksums_data();
    void checksums();
    void missingTypeByteIsZero_data();
    void missingTypeByteIsZero();
    void pausedDropsEverything();
    void viewOnTheCurrentTabGetsThePackets();
    void thresholdIsThatOfTheViewLastShown();
    void packetsWithoutAViewAreDropped();
    void packetsWaitWhileDetached();
    void packetsAreShownInOrderOfArrival();
    void packetsThatArriveMeanwhileWait();
    void destructorLeavesQueuedPackets();
};

namespace {

/// An attached window that shows a view that records.
class ShowingWindow : public AttachedWindow
{
public:
    /// Delivered on the caller's thread, a report is shown at once; on another thread it waits for the event
    /// loop.
    void deliver(const QByteArray &report, int threads = 0) { library.deliver(1, report, threads); }

    RecordingView *const view = showRecordingView();
};

/// A report that is always kept, and told apart by its third byte.
QByteArray report(int number)
{
    return QByteArray("\3\x21", 2) + static_cast<char>(number);
}

} // namespace

void IntakeTests::packetHoldsTheReport()
{
    AttachedWindow window({-2147483647});
    const RecordingView *view = window.showRecordingView();
    testclock::stopAt(QTime(1, 2, 3, 456));
    QByteArray bytes("\5\x21\0\xff\1", 5);
    window.library.deliver(-2147483647, bytes, 1);
    // The packet has a copy.
    bytes.fill('x');
    QTRY_COMPARE(view->packets.size(), 1);
    const _DataPacket &packet = view->packets.first();
    QCOMPARE(packet.data, QByteArray("\5\x21\0\xff\1", 5));
    QCOMPARE(packet.length, 5U);
    QCOMPARE(packet.device, -2147483647);
    QCOMPARE(packet.time, QTime(1, 2, 3, 456));
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
    ShowingWindow window;
    window.deliver(bytes);
    QTEST(window.view->packets.first().checksum, "checksum");
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
    ShowingWindow window;
    testclock::stopAt(QTime(12, 0));
    window.deliver("\2\x32");
    // The byte after the end is that of a type which is dropped now.
    const unsigned char bytes[] = {2, 104};
    qorvexgraph::DataCallback(1, isNull ? nullptr : bytes, static_cast<unsigned int>(length), &window);
    window.deliver("\2\x68");

    QCOMPARE(window.view->packets.size(), 2);
    const _DataPacket &packet = window.view->packets.last();
    QCOMPARE(packet.length, static_cast<quint32>(length));
    QCOMPARE(packet.data.size(), isNull ? 0 : length);
}

void IntakeTests::pausedDropsEverything()
{
    ShowingWindow window;
    QSignalSpy received(&window, SIGNAL(DataReceived()));
    window.detach();
    for (int type = 0; type <= 255; ++type)
        window.deliver(QByteArray("\3") + static_cast<char>(type) + '\0');
    QVERIFY(Inspect::packetQueue(window).empty());
    QCOMPARE(received.count(), 0);

    window.AttachHardware();
    // By now there are two connections; the extra delivery finds an empty queue.
    window.deliver(report(1));
    QCOMPARE(window.view->reports(), QByteArrayList{report(1)});
    QCOMPARE(received.count(), 1);
}

void IntakeTests::viewOnTheCurrentTabGetsThePackets()
{
    ShowingWindow window;
    const RecordingView *other = window.showRecordingView();
    window.deliver(report(1));
    window.tabs->setCurrentWidget(window.view);
    window.deliver(report(2));
    QCOMPARE(other->reports(), QByteArrayList{report(1)});
    QCOMPARE(window.view->reports(), QByteArrayList{report(2)});
    QVERIFY(Inspect::packetQueue(window).empty());
}

void IntakeTests::thresholdIsThatOfTheViewLastShown()
{
    ShowingWindow window;
    window.view->displayThreshold = 77;
    QCOMPARE(Inspect::displayThreshold(window), 50);
    window.deliver(report(1));
    QCOMPARE(Inspect::displayThreshold(window), 77);
    window.view->displayThreshold = 78;
    QCOMPARE(Inspect::displayThreshold(window), 77);
    window.view->onDisplay = [&window] { window.view->displayThreshold = 79; };
    window.deliver(report(2));
    QCOMPARE(Inspect::displayThreshold(window), 79);
}

void IntakeTests::packetsWithoutAViewAreDropped()
{
    ShowingWindow window;
    // A tab that holds no view, and then no tab.
    window.tabs->setCurrentIndex(window.tabs->addTab(new QWidget, "Plain"));
    for (int tabs = 1; tabs >= 0; --tabs) {
        window.deliver(report(1));
        QVERIFY(Inspect::packetQueue(window).empty());
        QVERIFY(window.view->packets.isEmpty());
        QCOMPARE(Inspect::displayThreshold(window), 50);
        window.tabs->clear();
    }
}

void IntakeTests::packetsWaitWhileDetached()
{
    ShowingWindow window;
    // The detach comes before the signal.
    window.deliver(report(1), 1);
    window.detach();
    QCoreApplication::processEvents();
    window.OnDataReceived();
    QCOMPARE(Inspect::packetQueue(window).size(), std::size_t(1));
    QVERIFY(window.view->packets.isEmpty());

    window.AttachHardware();
    window.deliver(report(2));
    QCOMPARE(window.view->reports(), QByteArrayList({report(1), report(2)}));

    // Here the next attach does, too.
    window.deliver(report(3), 1);
    window.detach();
    window.AttachHardware();
    QTRY_COMPARE(window.view->packets.size(), 3);
}

void IntakeTests::packetsAreShownInOrderOfArrival()
{
    ShowingWindow window;
    for (int i = 1; i <= 5; ++i)
        window.deliver(report(i), 1);
    QVERIFY(window.view->packets.isEmpty());
    QCOMPARE(Inspect::packetQueue(window).size(), std::size_t(5));
    QTRY_COMPARE(window.view->reports(),
                 QByteArrayList({report(1), report(2), report(3), report(4), report(5)}));
}

void IntakeTests::packetsThatArriveMeanwhileWait()
{
    ShowingWindow window;
    window.view->onDisplay = [&window] {
        if (window.view->packets.size() == 1)
            window.deliver(report(9), 1);
    };
    window.deliver(report(1), 1);
    window.deliver(report(2), 1);
    window.OnDataReceived();
    QCOMPARE(window.view->reports(), QByteArrayList({report(1), report(2)}));
    QCOMPARE(Inspect::packetQueue(window).size(), std::size_t(1));
    QTRY_COMPARE(window.view->reports(), QByteArrayList({report(1), report(2), report(9)}));
}

void IntakeTests::destructorLeavesQueuedPackets()
{
    const DriverLibrary library("complete", {1});
    auto *window = new qorvexgraph;
    window->AttachHardware();
    library.deliver(1, report(1), 1);
    const _DataPacket *packet = Inspect::packetQueue(*window).front();
    window->close();
    delete window;
    // Still there to be read, which the address sanitizer confirms.
    QCOMPARE(packet->data, report(1));
    delete packet;
}

PADSCOPE_TESTS(IntakeTests);
#include "tst_intake.moc"
