#include <memory>
#include <vector>

#include "livewindows.h"
#include "mainwindow/testwindow.h"
#include "orvexwrapper.h"

namespace {

// Of a type that is always kept.
const QByteArray longPlainReport("\x08\x21\x01\x02\x03\x04\x05\x06", 8);

/// Destroys a window, and fills its memory again, so that a use of it shows without a sanitizer too.
void destroy(qorvexgraph *window)
{
    delete window;
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
    void callbacksOfADestroyedWindow_data();
    void callbacksOfADestroyedWindow();
    void destructionWhileTheBoardsStream();
    void otherWindowsGoOn();
};

void WindowHazards::callbacksOfADestroyedWindow_data()
{
    addColumns<bool, int>("close", "threads");
    addRow("while attached; on the window's own thread", false, 0);
    addRow("while attached; on another thread", false, 1);
    addRow("while attached; on eight threads at once", false, 8);
    addRow("after a close; on the window's own thread", true, 0);
    addRow("after a close; on two threads at once", true, 2);
}

void WindowHazards::callbacksOfADestroyedWindow()
{
    QFETCH(bool, close);
    QFETCH(int, threads);
    const DriverLibrary library("complete", {1});
    auto *window = new qorvexgraph;
    window->AttachHardware();
    if (close)
        window->close();
    const std::unique_ptr<const OrvexWrapper> binding(Inspect::binding(*window));
    library.takeCalls();
    destroy(window);
    QCOMPARE(library->dataCallbackCount(1), 1);
    library.deliver(1, longPlainReport, threads);
    QCOMPARE(library->pnpCallbackCount(), 1);
    library->plug();
    QCoreApplication::processEvents();
    QCOMPARE(library.takeCalls(), QStringList());
}

void WindowHazards::destructionWhileTheBoardsStream()
{
    const DriverLibrary library("complete", {1, 2});
    library->startFlood(4);
    for (int round = 0; round < 20; ++round) {
        auto *window = new qorvexgraph;
        window->AttachHardware();
        QCoreApplication::processEvents();
        if (round % 2)
            window->close();
        // From here on no thread of the library can queue one more.
        livewindows::remove(window);
        freePackets(*window);
        const std::unique_ptr<const OrvexWrapper> binding(Inspect::binding(*window));
        delete window;
    }
    QVERIFY(library->stopFlood() > 0);
}

void WindowHazards::otherWindowsGoOn()
{
    auto gone = std::make_unique<qorvexgraph>();
    AttachedWindow window;
    gone->AttachHardware();
    gone->close();
    gone.reset();
    window.library.deliver(1, longPlainReport, 1);
    QCOMPARE(Inspect::packetQueue(window).size(), std::size_t{1});
    QTRY_COMPARE(Inspect::packetQueue(window).size(), std::size_t{0});
}

PADSCOPE_TESTS(WindowHazards);
#include "tst_hazards_windows.moc"
