#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include <QElapsedTimer>
#include <QPointer>

#include "datapacket.h"
#include "livewindows.h"
#include "qorvexgraph.h"
#include "support/driverlibrary.h"
#include "support/tests.h"

namespace {

// Of a type that is always kept.
const QByteArray plainReport("\x03\x21\x01", 3);

/// Ends the program when it lives for too long: what hangs would otherwise say nothing.
class Watchdog
{
public:
    Watchdog() = default;
    ~Watchdog()
    {
        {
            const std::lock_guard lock(mutex);
            isDone = true;
        }
        changed.notify_one();
        thread.join();
    }

    Watchdog(const Watchdog &) = delete;
    Watchdog &operator=(const Watchdog &) = delete;

private:
    void watch()
    {
        std::unique_lock lock(mutex);
        if (!changed.wait_for(lock, std::chrono::seconds(30), [this] { return isDone; }))
            qFatal("the GUI thread waits for ever");
    }

    std::mutex mutex;
    std::condition_variable changed;
    bool isDone = false;
    std::thread thread{&Watchdog::watch, this};
};

/// Frees the packets that wait, too, which the destructor leaves by design.
void closeAndDestroy(qorvexgraph *window)
{
    window->detachFromHardware();
    qDeleteAll(std::exchange(window->packetQueue, {}));
    delete window;
}

} // namespace

/// A report on a thread of its own, whose callback waits in a slot of the host's until the GUI thread runs
/// it.
class WaitingCallback : public QObject
{
    Q_OBJECT

public:
    WaitingCallback(qorvexgraph *window, std::function<void()> function)
        : action(std::move(function))
    {
        connect(window, SIGNAL(DataReceived()), this, SLOT(noteEmission()), Qt::DirectConnection);
        connect(window, SIGNAL(DataReceived()), this, SLOT(act()), Qt::BlockingQueuedConnection);
        callback = std::thread([window] {
            qorvexgraph::DataCallback(1, reinterpret_cast<const unsigned char *>(plainReport.constData()), 3,
                                      window);
        });
        while (!isEmitting)
            std::this_thread::yield();
    }
    ~WaitingCallback() override { callback.join(); }

private slots:
    void noteEmission() { isEmitting = true; }
    void act() { action(); }

private:
    std::function<void()> action;
    std::atomic<bool> isEmitting{false};
    std::thread callback;
};

/// Slots of the host that hold a callback up, and windows that come and go meanwhile.
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
};

void BlockingHazards::otherWindowsComeAndGo()
{
    const Watchdog watchdog;
    const DriverLibrary library("complete");
    qorvexgraph window;
    window.AttachHardware();
    bool isHeard = false;
    {
        const WaitingCallback callback(&window, [&] { isHeard = true; });
        delete new qorvexgraph;
        QVERIFY(!isHeard);
        QTRY_VERIFY(isHeard);
    }
    QTRY_VERIFY(window.packetQueue.empty());
    window.detachFromHardware();
}

void BlockingHazards::windowIsDestroyedMeanwhile_data()
{
    QTest::addColumn<bool>("disconnects");
    QTest::newRow("the host is connected") << false;
    QTest::newRow("the host has disconnected") << true;
}

void BlockingHazards::windowIsDestroyedMeanwhile()
{
    QFETCH(bool, disconnects);
    const Watchdog watchdog;
    const DriverLibrary library("complete");
    auto *window = new qorvexgraph;
    window->AttachHardware();
    bool isHeard = false;
    const WaitingCallback callback(window, [&] { isHeard = true; });
    if (disconnects)
        QObject::disconnect(window, nullptr, &callback, nullptr);
    closeAndDestroy(window);
    QTRY_VERIFY(isHeard);
}

// A host may also make a slot of the window's wait, for example to have packets shown at once.
void BlockingHazards::windowIsDestroyedWhileItsOwnSlotWaits()
{
    const Watchdog watchdog;
    const DriverLibrary library("complete");
    auto *window = new qorvexgraph;
    window->AttachHardware();
    std::atomic<bool> isEmitting{false};
    connect(
        window, &qorvexgraph::DataReceived, window, [&isEmitting] { isEmitting = true; },
        Qt::DirectConnection);
    connect(window, SIGNAL(DataReceived()), window, SLOT(ShowDevices()), Qt::BlockingQueuedConnection);
    std::thread thread([window] {
        qorvexgraph::DataCallback(1, reinterpret_cast<const unsigned char *>(plainReport.constData()), 3,
                                  window);
    });
    while (!isEmitting)
        std::this_thread::yield();
    closeAndDestroy(window);
    thread.join();
}

void BlockingHazards::windowIsDestroyedByTheSlot()
{
    const Watchdog watchdog;
    const DriverLibrary library("complete");
    auto *window = new qorvexgraph;
    window->AttachHardware();
    const QPointer<QObject> guarded = window;
    const WaitingCallback callback(window, [&] { closeAndDestroy(window); });
    QVERIFY(guarded);
    QTRY_VERIFY(!guarded);
}

void BlockingHazards::windowIsDestroyedByASlotOfTheSameThread()
{
    const Watchdog watchdog;
    const DriverLibrary library("complete");
    library.setBoards({1});
    auto *window = new qorvexgraph;
    window->AttachHardware();
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
    const Watchdog watchdog;
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
    while (!isInProgress)
        std::this_thread::yield();
    window.reset();
    QVERIFY(hasEnded);
    thread.join();
}

PADSCOPE_TESTS(BlockingHazards);
#include "tst_hazards_blocking.moc"
