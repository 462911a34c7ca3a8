#include <atomic>
#include <functional>
#include <memory>
#include <QElapsedTimer>
#include <QPointer>
#include <thread>

#include "livewindows.h"
#include "mainwindow/testwindow.h"

namespace {

// Of a type that is always kept.
const QByteArray plainReport("\x03\x21\x01", 3);

void waitFor(const std::atomic<bool> &flag)
{
    while (!flag)
        std::this_thread::yield();
}

/// A new window of a library that knows one board.
qorvexgraph *newAttachedWindow()
{
    auto *window = new qorvexgraph;
    window->AttachHardware();
    return window;
}

void closeAndDestroy(qorvexgraph *window)
{
    window->close();
    freePackets(*window);
    delete window;
}

} // namespace

/// A callback on a thread of its own, which waits in a slot of the host's until the GUI thread runs it.
class WaitingCallback : public QObject
{
    Q_OBJECT

public:
    /// \param slot of the receiver's, called on the GUI thread
    /// \param isReport whether it brings a report, or notifies of boards
    WaitingCallback(qorvexgraph *window, const QObject *receiver, const char *slot, bool isReport = true)
    {
        const char *received = isReport ? SIGNAL(DataReceived()) : SIGNAL(PnpHappened());
        connect(window, received, this, SLOT(noteEmission()), Qt::DirectConnection);
        connect(window, received, receiver, slot, Qt::BlockingQueuedConnection);
        thread = std::thread([window, isReport] {
            const auto *report = reinterpret_cast<const unsigned char *>(plainReport.constData());
            if (isReport)
                qorvexgraph::DataCallback(1, report, 3, window);
            else
                qorvexgraph::pnp(window);
        });
        waitFor(isEmitting);
    }
    WaitingCallback(qorvexgraph *window, std::function<void()> function, bool isReport = true)
        : WaitingCallback(window, this, SLOT(act()), isReport)
    {
        action = std::move(function);
    }
    ~WaitingCallback() override { thread.join(); }

private slots:
    void noteEmission() { isEmitting = true; }
    void act() { action(); }

private:
    std::function<void()> action;
    std::atomic<bool> isEmitting{false};
    std::thread thread;
};

/// Slots of the host that hold a callback up, and windows that come and go meanwhile. What hangs here meets
/// the time limit of the test.
class BlockingHazards : public QObject
{
    Q_OBJECT

private slots:
    void otherWindowsComeAndGo();
    void windowIsDestroyedMeanwhile_data();
    void windowIsDestroyedMeanwhile();
    void windowIsDestroyedWhileItsOwnSlotWaits();
    void windowIsDestroyedByTheSlot();
    void windowIsDestroyedByASlotOfTheSameThread();
    void destructionWaitsForTheWindowsOwnCallback();

private:
    const DriverLibrary library{"complete", {1}};
};

void BlockingHazards::otherWindowsComeAndGo()
{
    qorvexgraph *window = newAttachedWindow();
    bool isHeard = false;
    {
        const WaitingCallback callback(window, [&] { isHeard = true; });
        delete new qorvexgraph;
        QVERIFY(!isHeard);
        QTRY_VERIFY(isHeard);
    }
    QTRY_VERIFY(Inspect::packetQueue(*window).empty());
    closeAndDestroy(window);
}

void BlockingHazards::windowIsDestroyedMeanwhile_data()
{
    addColumns<bool, bool>("disconnects", "isReport");
    addRow("report; the host is connected", false, true);
    addRow("report; the host has disconnected", true, true);
    addRow("notification; the host is connected", false, false);
}

void BlockingHazards::windowIsDestroyedMeanwhile()
{
    QFETCH(bool, disconnects);
    QFETCH(bool, isReport);
    qorvexgraph *window = newAttachedWindow();
    bool isHeard = false;
    const WaitingCallback callback(
        window, [&] { isHeard = true; }, isReport);
    if (disconnects)
        QObject::disconnect(window, nullptr, &callback, nullptr);
    closeAndDestroy(window);
    QTRY_VERIFY(isHeard);
}

// A host may also make a slot of the window's wait, for example to have packets shown at once.
void BlockingHazards::windowIsDestroyedWhileItsOwnSlotWaits()
{
    qorvexgraph *window = newAttachedWindow();
    const WaitingCallback callback(window, window, SLOT(ShowDevices()));
    closeAndDestroy(window);
}

void BlockingHazards::windowIsDestroyedByTheSlot()
{
    qorvexgraph *window = newAttachedWindow();
    const QPointer<QObject> guarded = window;
    const WaitingCallback callback(window, [&] { closeAndDestroy(window); });
    QVERIFY(guarded);
    QTRY_VERIFY(!guarded);
}

void BlockingHazards::windowIsDestroyedByASlotOfTheSameThread()
{
    qorvexgraph *window = newAttachedWindow();
    const QPointer<QObject> guarded = window;
    connect(window, &qorvexgraph::DataReceived, this, [&] { closeAndDestroy(window); });
    QElapsedTimer timer;
    timer.start();
    library.deliver(1, plainReport);
    QVERIFY(!guarded);
    // The destructor runs inside the callback, and doesn't wait for it.
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

void BlockingHazards::destructionWaitsForTheWindowsOwnCallback()
{
    auto window = std::make_unique<qorvexgraph>();
    std::atomic<bool> isInProgress{false};
    std::atomic<bool> hasEnded{false};
    std::thread thread([&, context = window.get()] {
        const livewindows::Guard guard(context);
        isInProgress = true;
        // The destructor takes the window off the list before it waits.
        while (livewindows::Guard(context).window())
            std::this_thread::yield();
        // Longer than it waits for a slot of the host's.
        std::this_thread::sleep_for(std::chrono::milliseconds(1200));
        hasEnded = true;
    });
    waitFor(isInProgress);
    window.reset();
    QVERIFY(hasEnded);
    thread.join();
}

PADSCOPE_TESTS(BlockingHazards);
#include "tst_hazards_blocking.moc"
