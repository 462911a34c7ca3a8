#include "torture/torture.h"

#include <chrono>
#include <thread>

#include <QAbstractSlider>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>

#include "bargraph.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "support/abandonedwindow.h"
#include "torture/packetcount.h"

namespace {

constexpr int mostWindows = 3;
constexpr std::size_t mostQueued = 5000; ///< in a window, before the flood pauses
constexpr int threads = 8;
constexpr std::chrono::milliseconds floodLimit{100}; ///< of a flood within one step

} // namespace

const std::vector<Torture::Weighted> Torture::operations{
    {&Torture::deliverHere, 20},
    {&Torture::deliverOnThreads, 20},
    {&Torture::switchFlood, 4},
    {&Torture::plug, 5},
    {&Torture::notice, 5},
    {&Torture::attach, 8},
    {&Torture::close, 2},
    {&Torture::hide, 2},
    {&Torture::show, 6},
    {&Torture::minimise, 2},
    {&Torture::switchTab, 10},
    {&Torture::type, 8},
    {&Torture::recall, 4},
    {&Torture::changeFont, 2},
    {&Torture::moveSliders, 6},
    {&Torture::switchBoxes, 4},
    {&Torture::stepFrequency, 6},
    {&Torture::resize, 2},
    {&Torture::paint, 4},
    {&Torture::openWindow, 3},
    {&Torture::destroyClosedWindow, 2},
    {&Torture::destroyAttachedWindow, 1},
    {&Torture::loseLibrary, 1},
    {&Torture::runEvents, 30},
};

Torture::Torture(unsigned int seed)
    : random(seed)
    , library(std::make_unique<DriverLibrary>("complete"))
{
    openWindow();
    windows.front()->AttachHardware();
    packetcount::learn(windows.front());
    windows.front()->AttachHardware();
}

Torture::~Torture()
{
    stopFlood();
    while (!windows.empty())
        destroy(0);
}

void Torture::step()
{
    // A drain shows all that was queued when it began: on a machine that is too busy, a flood that goes on
    // would make each longer than the one before.
    if (isFlooding && longestQueue() > mostQueued)
        stopFlood();
    std::vector<int> weights;
    for (const Weighted &entry : operations)
        weights.push_back(entry.weight);
    std::discrete_distribution<std::size_t> choice(weights.begin(), weights.end());
    const Operation operation = operations[choice(random)].operation;
    std::promise<void> isDone;
    std::thread watcher;
    if (isFlooding)
        watcher = std::thread(&Torture::limitFlood, this, isDone.get_future());
    (this->*operation)();
    isDone.set_value();
    if (watcher.joinable())
        watcher.join();
    ++stepCount;
}

// Each attach adds a connection, so a flood may post events and queue packets faster than the tool takes
// them, and a step would never end.
void Torture::limitFlood(std::future<void> isDone)
{
    if (isDone.wait_for(floodLimit) == std::future_status::timeout)
        stopFlood();
}

QString Torture::account()
{
    stopFlood();
    // Twice: what is shown may be answered.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    long queued = 0;
    for (qorvexgraph *window : windows)
        queued += static_cast<long>(queuedIn(window));
    const long made = packetcount::created();
    const long freed = packetcount::freed();
    if (!packetcount::isCounting() || made == freed + queued + leftInDestroyed)
        return {};
    return QStringLiteral("%1 packets made, %2 freed, %3 queued, %4 left in destroyed windows")
        .arg(made)
        .arg(freed)
        .arg(queued)
        .arg(leftInDestroyed);
}

std::size_t Torture::queuedIn(qorvexgraph *window)
{
    const QMutexLocker lock(&window->queueMutex);
    return window->packetQueue.size();
}

std::size_t Torture::longestQueue() const
{
    std::size_t longest = 0;
    for (qorvexgraph *window : windows)
        longest = qMax(longest, queuedIn(window));
    return longest;
}

QByteArray Torture::randomReport()
{
    constexpr unsigned char types[] = {47, 50, 104, 119, 162, 163, 164, 33};
    constexpr unsigned char lengths[] = {10, 14, 16, 25, 40, 52, 58};
    QByteArray report(upTo(70), '\0');
    for (char &byte : report)
        byte = static_cast<char>(upTo(255));
    if (report.size() > 2 && upTo(9) > 0) {
        report[0] = static_cast<char>(lengths[upTo(6)]);
        report[1] = static_cast<char>(types[upTo(7)]);
        report[2] = static_cast<char>(upTo(12));
    }
    if (upTo(4) == 0)
        report += upTo(1) ? "\r\n" : "!";
    return report;
}

void Torture::deliverHere()
{
    library->deliver(1 + upTo(2), randomReport());
}

void Torture::deliverOnThreads()
{
    library->deliver(1 + upTo(2), randomReport(), threads);
}

void Torture::switchFlood()
{
    if (isFlooding) {
        stopFlood();
    } else {
        (*library)->startFlood(threads);
        isFlooding = true;
    }
}

void Torture::stopFlood()
{
    const std::lock_guard lock(floodMutex);
    if (isFlooding.exchange(false))
        (*library)->stopFlood();
}

void Torture::plug()
{
    library->setBoards(QVector<int>{1, 2, 3}.mid(0, upTo(3)));
    (*library)->plug();
}

void Torture::notice()
{
    (*library)->plug();
}

void Torture::attach()
{
    anyWindow()->AttachHardware();
}

void Torture::close()
{
    anyWindow()->close();
}

void Torture::hide()
{
    anyWindow()->hide();
}

void Torture::show()
{
    anyWindow()->showNormal();
}

void Torture::minimise()
{
    anyWindow()->showMinimized();
}

void Torture::switchTab()
{
    anyWindow()->tabs->setCurrentIndex(upTo(1));
}

void Torture::type()
{
    constexpr const char *commands[] = {"A", ":RMM", "", "U8", ":MDU1"};
    QLineUpDownEdit *line = anyWindow()->commandLine;
    line->setText(QLatin1String(commands[upTo(4)]));
    QTest::keyClick(line, Qt::Key_Return);
}

void Torture::recall()
{
    QTest::keyClick(anyWindow()->commandLine, upTo(1) ? Qt::Key_Up : Qt::Key_Down);
}

void Torture::changeFont()
{
    for (QComboBox *box : anyWindow()->monitorView->findChildren<QComboBox *>()) {
        if (box->count() > 0)
            box->setCurrentIndex(upTo(box->count() - 1));
    }
}

void Torture::moveSliders()
{
    for (auto *slider : anyWindow()->findChildren<QAbstractSlider *>("displayThresholdSlider"))
        slider->setValue(upTo(3) ? upTo(50) : upTo(1000));
}

void Torture::switchBoxes()
{
    const auto boxes = anyWindow()->findChildren<QCheckBox *>();
    boxes.at(upTo(boxes.size() - 1))->toggle();
}

void Torture::stepFrequency()
{
    anyWindow()->barGraphView->freqSpin->setValue(upTo(500000));
}

void Torture::resize()
{
    const int width = upTo(1200);
    anyWindow()->resize(width, upTo(900));
}

void Torture::paint()
{
    anyWindow()->grab();
}

void Torture::openWindow()
{
    if (windows.size() < mostWindows)
        windows.push_back(new qorvexgraph);
}

void Torture::destroy(std::size_t index)
{
    qorvexgraph *window = windows[index];
    windows.erase(windows.begin() + static_cast<std::ptrdiff_t>(index));
    // Left for good by design.
    delete std::exchange(window->monitorView->previousPacket, nullptr);
    leftInDestroyed += static_cast<long>(destroyAbandoned(window));
}

void Torture::destroyClosedWindow()
{
    if (windows.size() < 2)
        return;
    const auto index = static_cast<std::size_t>(upTo(int(windows.size()) - 1));
    windows[index]->show();
    windows[index]->close();
    destroy(index);
}

void Torture::destroyAttachedWindow()
{
    if (windows.size() < 2)
        return;
    const auto index = static_cast<std::size_t>(upTo(int(windows.size()) - 1));
    windows[index]->AttachHardware();
    destroy(index);
}

void Torture::loseLibrary()
{
    stopFlood();
    for (qorvexgraph *window : windows)
        window->detachFromHardware();
    library->close();
    if (DriverLibrary::isLoaded())
        qFatal("a detached window keeps the library loaded");
    anyWindow()->AttachHardware();
    QCoreApplication::processEvents();
    library = std::make_unique<DriverLibrary>("complete");
    library->setBoards({1, 2});
}

void Torture::runEvents()
{
    QCoreApplication::processEvents();
}
