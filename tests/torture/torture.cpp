#include <atomic>
#include <cstdio>
#include <future>
#include <mutex>
#include <QAbstractSlider>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QSpinBox>
#include <QTabWidget>
#include <random>

#include "qlineupdownedit.h"
#include "support/driverlibrary.h"
#include "support/testmain.h"
#include "torture/inspect.h"
#include "torture/packetcount.h"

namespace {

constexpr int stepsBetweenAccounts = 200;
constexpr std::size_t maxWindows = 3;
constexpr long maxQueued = 5000; ///< in a window, before the flood pauses
constexpr int threads = 8;
constexpr std::chrono::milliseconds floodLimit{100}; ///< of a flood within one step

constexpr const char *commands[] = {"A", ":RMM", "", "U8", ":MDU1"};

template <typename Widget>
Widget *find(const qorvexgraph *window)
{
    return window->findChild<Widget *>();
}

void type(qorvexgraph *window, const char *command)
{
    auto *line = find<QLineUpDownEdit>(window);
    line->setText(command);
    QTest::keyClick(line, Qt::Key_Return);
}

/// Random things that a user, boards and a driver library do, in an order that a seed gives; the threads of
/// the library run as they will.
class Torture
{
public:
    explicit Torture(unsigned int seed);
    ~Torture();

    /// \return whether no packet was lost, and none freed twice
    bool run(qint64 ms);

private:
    struct Operation
    {
        int weight;
        void (*run)(Torture &t);
    };
    static const std::vector<Operation> operations;

    int upTo(int max) { return std::uniform_int_distribution<int>(0, max)(random); }
    template <typename List>
    auto &anyOf(List &list)
    {
        return list[static_cast<std::size_t>(upTo(static_cast<int>(std::size(list)) - 1))];
    }
    qorvexgraph *anyWindow() { return anyOf(windows); }
    void step();
    long lostPackets();
    QByteArray randomReport();
    void startFlood();
    void stopFlood();
    void destroy(qorvexgraph *window);
    void destroyOneOfSeveral(void (*before)(qorvexgraph *window));
    void loseLibrary();

    std::mt19937 random;
    std::unique_ptr<DriverLibrary> library;
    std::vector<qorvexgraph *> windows;
    std::mutex floodMutex; ///< held while the flood is stopped
    std::atomic<bool> isFlooding{false};
    long leftInDestroyed = 0;
};

const std::vector<Torture::Operation> Torture::operations{
    {20, [](Torture &t) { t.library->deliver(1 + t.upTo(2), t.randomReport()); }},
    {20, [](Torture &t) { t.library->deliver(1 + t.upTo(2), t.randomReport(), threads); }},
    {4, [](Torture &t) { t.isFlooding ? t.stopFlood() : t.startFlood(); }},
    {5,
     [](Torture &t) {
         t.library->setBoards(QVector<int>{1, 2, 3}.mid(0, t.upTo(3)));
         (*t.library)->plug();
     }},
    {5, [](Torture &t) { (*t.library)->plug(); }},
    {8, [](Torture &t) { t.anyWindow()->AttachHardware(); }},
    {2, [](Torture &t) { t.anyWindow()->close(); }},
    {2, [](Torture &t) { t.anyWindow()->hide(); }},
    {6, [](Torture &t) { t.anyWindow()->showNormal(); }},
    {2, [](Torture &t) { t.anyWindow()->showMinimized(); }},
    {10, [](Torture &t) { find<QTabWidget>(t.anyWindow())->setCurrentIndex(t.upTo(1)); }},
    {8, [](Torture &t) { type(t.anyWindow(), t.anyOf(commands)); }},
    {4,
     [](Torture &t) {
         QTest::keyClick(find<QLineUpDownEdit>(t.anyWindow()), t.upTo(1) ? Qt::Key_Up : Qt::Key_Down);
     }},
    {2,
     [](Torture &t) {
         for (auto *box : find<monitor>(t.anyWindow())->findChildren<QComboBox *>())
             box->setCurrentIndex(t.upTo(qMax(0, box->count() - 1)));
     }},
    {6,
     [](Torture &t) {
         for (auto *slider : t.anyWindow()->findChildren<QAbstractSlider *>("displayThresholdSlider"))
             slider->setValue(t.upTo(3) ? t.upTo(50) : t.upTo(1000));
     }},
    {4,
     [](Torture &t) {
         const auto boxes = t.anyWindow()->findChildren<QCheckBox *>();
         boxes.at(t.upTo(boxes.size() - 1))->toggle();
     }},
    {6, [](Torture &t) { find<QSpinBox>(t.anyWindow())->setValue(t.upTo(500000)); }},
    {2, [](Torture &t) { t.anyWindow()->resize(t.upTo(1200), t.upTo(900)); }},
    {4, [](Torture &t) { t.anyWindow()->grab(); }},
    {3,
     [](Torture &t) {
         if (t.windows.size() < maxWindows)
             t.windows.push_back(new qorvexgraph);
     }},
    {2,
     [](Torture &t) {
         t.destroyOneOfSeveral([](qorvexgraph *window) {
             window->show();
             window->close();
         });
     }},
    {1, [](Torture &t) { t.destroyOneOfSeveral([](qorvexgraph *window) { window->AttachHardware(); }); }},
    {1, [](Torture &t) { t.loseLibrary(); }},
    {30, [](Torture &) { QCoreApplication::processEvents(); }},
};

Torture::Torture(unsigned int seed)
    : random(seed)
    , library(std::make_unique<DriverLibrary>("complete"))
{
    windows.push_back(new qorvexgraph);
    windows.front()->AttachHardware();
    packetcount::learn(windows.front());
    windows.front()->AttachHardware();
}

Torture::~Torture()
{
    stopFlood();
    while (!windows.empty())
        destroy(windows.front());
}

bool Torture::run(qint64 ms)
{
    QElapsedTimer timer;
    timer.start();
    long steps = 0;
    long lost = 0;
    while (lost == 0 && timer.elapsed() < ms) {
        step();
        if (++steps % stepsBetweenAccounts == 0)
            lost = lostPackets();
    }
    lost = lostPackets();
    std::fprintf(stderr, "%ld steps, packets: %ld made, %ld freed, %ld left in destroyed windows, %ld lost\n",
                 steps, packetcount::made.load(), packetcount::freed.load(), leftInDestroyed, lost);
    return lost == 0;
}

void Torture::step()
{
    // A drain shows all that was queued when it began: on a machine that is too busy, a flood that goes on
    // would make each longer than the one before.
    for (qorvexgraph *window : windows) {
        if (Inspect::queued(*window) > maxQueued)
            stopFlood();
    }
    std::vector<int> weights;
    for (const Operation &operation : operations)
        weights.push_back(operation.weight);
    std::discrete_distribution<std::size_t> choice(weights.begin(), weights.end());
    const Operation &operation = operations[choice(random)];
    // Each attach adds a connection, so a flood may post events and queue packets faster than the tool takes
    // them, and a step would never end.
    std::promise<void> isDone;
    std::future<void> watcher; // waited for at the end
    if (isFlooding)
        watcher = std::async(std::launch::async, [this, done = isDone.get_future()] {
            if (done.wait_for(floodLimit) == std::future_status::timeout)
                stopFlood();
        });
    operation.run(*this);
    isDone.set_value();
}

/// Brings everything to rest.
/// \return the packets that were neither freed nor are left anywhere
long Torture::lostPackets()
{
    stopFlood();
    // Twice: what is shown may be answered.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    long queued = 0;
    for (qorvexgraph *window : windows)
        queued += Inspect::queued(*window);
    return packetcount::isCounting ? packetcount::made - packetcount::freed - queued - leftInDestroyed : 0;
}

QByteArray Torture::randomReport()
{
    constexpr unsigned char types[] = {47, 50, 104, 119, 162, 163, 164, 33};
    constexpr unsigned char lengths[] = {10, 14, 16, 25, 40, 52, 58};
    QByteArray report(upTo(70), '\0');
    for (char &byte : report)
        byte = static_cast<char>(upTo(255));
    if (report.size() > 2 && upTo(9) > 0) {
        report[0] = static_cast<char>(anyOf(lengths));
        report[1] = static_cast<char>(anyOf(types));
        report[2] = static_cast<char>(upTo(12));
    }
    if (upTo(4) == 0)
        report += upTo(1) ? "\r\n" : "!";
    return report;
}

void Torture::startFlood()
{
    (*library)->startFlood(threads);
    isFlooding = true;
}

void Torture::stopFlood()
{
    const std::lock_guard lock(floodMutex);
    if (isFlooding.exchange(false))
        (*library)->stopFlood();
}

void Torture::destroy(qorvexgraph *window)
{
    windows.erase(std::find(windows.begin(), windows.end(), window));
    leftInDestroyed += Inspect::destroyAbandoned(window);
}

void Torture::destroyOneOfSeveral(void (*before)(qorvexgraph *window))
{
    if (windows.size() < 2)
        return;
    qorvexgraph *window = anyWindow();
    before(window);
    destroy(window);
}

void Torture::loseLibrary()
{
    stopFlood();
    for (qorvexgraph *window : windows)
        Inspect::detach(*window);
    library->close();
    if (DriverLibrary::isLoaded())
        qFatal("a detached window keeps the library loaded");
    anyWindow()->AttachHardware();
    QCoreApplication::processEvents();
    library = std::make_unique<DriverLibrary>("complete");
    library->setBoards({1, 2});
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    testsupport::useHome(home.path());
    const std::unique_ptr<QApplication> application = testsupport::newApplication(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Random use of the tool, against eight threads of reports.");
    parser.addHelpOption();
    parser.addOption({"seconds", "How long.", "number", "10"});
    parser.addOption({"seed", "Gives the order of things; random when left out.", "number"});
    parser.process(*application);
    const unsigned int seed = parser.isSet("seed") ? parser.value("seed").toUInt() : std::random_device{}();
    std::fprintf(stderr, "seed %u\n", seed);
    // The steps of the spin box, and the loader's words on a library that is missing, are many.
    if (!std::freopen("/dev/null", "w", stdout))
        return 2;
    return Torture(seed).run(parser.value("seconds").toLongLong() * 1000) ? 0 : 1;
}
