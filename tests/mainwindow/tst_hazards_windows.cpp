#include <memory>
#include <vector>

#include <QLabel>

#include "support/abandonedwindow.h"
#include "support/driverlibrary.h"
#include "support/tests.h"

namespace {

// Of a type that is always kept.
const QByteArray plainReport("\x08\x21\x01\x02\x03\x04\x05\x06", 8);

/// Fills freed memory again, so that a use of it shows without a sanitizer too.
void overwriteFreedMemory()
{
    std::vector<std::unique_ptr<unsigned char[]>> blocks;
    for (int i = 0; i < 200; ++i) {
        blocks.emplace_back(new unsigned char[sizeof(qorvexgraph)]);
        std::fill_n(blocks.back().get(), sizeof(qorvexgraph), static_cast<unsigned char>(0));
    }
}

} // namespace

/// The driver library keeps the callbacks of windows that are gone, and calls them.
class WindowHazards : public QObject
{
    Q_OBJECT

private slots:
    void reportForAWindowDestroyedWhileAttached_data();
    void reportForAWindowDestroyedWhileAttached();
    void reportForAWindowDestroyedAfterAClose();
    void noticeForADestroyedWindow();
    void destructionWhileTheBoardsStream();
    void otherWindowsGoOn();
    void noticeQueuedBeforeAClose();
};

void WindowHazards::reportForAWindowDestroyedWhileAttached_data()
{
    QTest::addColumn<int>("threads");
    QTest::newRow("on the window's own thread") << 0;
    QTest::newRow("on another thread") << 1;
    QTest::newRow("on eight threads at once") << 8;
}

void WindowHazards::reportForAWindowDestroyedWhileAttached()
{
    QFETCH(int, threads);
    const DriverLibrary library("complete");
    library.setBoards({1});
    auto *window = new qorvexgraph;
    window->AttachHardware();
    OrvexWrapper *binding = window->hardware;
    delete window;
    overwriteFreedMemory();
    library.deliver(1, plainReport, threads);
    QCOMPARE(library->dataCallbackCount(1), 1);
    delete binding;
}

void WindowHazards::reportForAWindowDestroyedAfterAClose()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    auto *window = new qorvexgraph;
    window->AttachHardware();
    window->close();
    window->detachFromHardware();
    delete window;
    overwriteFreedMemory();
    library.deliver(1, plainReport);
    library.deliver(1, plainReport, 2);
    QCOMPARE(library->dataCallbackCount(1), 1);
}

void WindowHazards::noticeForADestroyedWindow()
{
    const DriverLibrary library("complete");
    auto *window = new qorvexgraph;
    window->AttachHardware();
    window->detachFromHardware();
    delete window;
    overwriteFreedMemory();
    library.takeCalls();
    library->plug();
    QCoreApplication::processEvents();
    QCOMPARE(library->pnpCallbackCount(), 1);
    QCOMPARE(library.takeCalls(), QStringList());
}

void WindowHazards::destructionWhileTheBoardsStream()
{
    const DriverLibrary library("complete");
    library.setBoards({1, 2});
    library->startFlood(4);
    for (int round = 0; round < 20; ++round) {
        auto *window = new qorvexgraph;
        window->AttachHardware();
        QCoreApplication::processEvents();
        if (round % 2)
            window->detachFromHardware();
        destroyAbandoned(window);
    }
    QVERIFY(library->stopFlood() > 0);
}

void WindowHazards::otherWindowsGoOn()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    auto *gone = new qorvexgraph;
    gone->AttachHardware();
    qorvexgraph window;
    window.AttachHardware();
    gone->detachFromHardware();
    delete gone;
    library.deliver(1, plainReport, 1);
    QCOMPARE(window.packetQueue.size(), std::size_t{1});
    QTRY_COMPARE(window.packetQueue.size(), std::size_t{0});
    window.detachFromHardware();
}

void WindowHazards::noticeQueuedBeforeAClose()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    library->plug();
    window.detachFromHardware();
    library.takeCalls();
    QCoreApplication::processEvents();
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QCOMPARE(library.takeCalls(), QStringList());
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b> <i>Paused</i>"));

    window.AttachHardware();
    library->plug();
    library.takeCalls();
    QCoreApplication::processEvents();
    QCOMPARE(library.takeCalls().first(), QStringLiteral("orvexAttach()"));
    window.detachFromHardware();
}

PADSCOPE_TESTS(WindowHazards);
#include "tst_hazards_windows.moc"
