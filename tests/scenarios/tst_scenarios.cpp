#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QTabWidget>

#include "hostwindow.h"
#include "simulation.h"
#include "simulator/simulatedlibrary.h"
#include "support/datalines.h"
#include "support/tests.h"
#include "support/waitingpackets.h"
#include "toolparts.h"

namespace {

constexpr int timeoutMs = 30'000;

QString devicesFound(int count)
{
    if (count == 0)
        return QStringLiteral("<i>No device found.</i>");
    return count == 1 ? QStringLiteral("<b>1 device found.</b>")
                      : QStringLiteral("<b>%1 devices found.</b>").arg(count);
}

int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

/// Whether there is a pixel of the meter's bar, which is in the greens from (10, 40, 10) to (10, 240, 10).
bool showsMeter(const QImage &picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor color = picture.pixelColor(x, y);
            if (color.red() == 10 && color.green() >= 200 && color.blue() == 10)
                return true;
        }
    }
    return false;
}

/// Calls by which the tool lets a board go.
QStringList closingCalls(const QStringList &boards)
{
    QStringList calls;
    for (const QString &id : boards) {
        calls += QStringLiteral("orvexSetDriverDebugMode(%1, 1, 4294967295)").arg(id);
        calls += QStringLiteral("orvexSendCommand(%1, \":MDU0\\r\")").arg(id);
        calls += QStringLiteral("orvexSendCommand(%1, \":MDP0\\r\")").arg(id);
    }
    // once by the tool and once by its binding
    return calls << QStringLiteral("orvexDetach()") << QStringLiteral("orvexDetach()");
}

} // namespace

/// Each shipped scenario, through the tool as it is installed, in the host's window.
class ScenariosTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void areAllExpected();
    void plays_data();
    void plays();

private:
    void open();
    void showsPicture(const QString &expected);
    void closesCleanly(const QString &label, const QStringList &boards);

    QString label() const;
    bool hasRow(const QString &pattern) const;
    QStringList calls() const;
    QImage barGraph() const;

    std::unique_ptr<SimulatedLibrary> library_;
    std::optional<Simulation> simulation_;
    PluginScan scan_;
    std::unique_ptr<HostWindow> window_;
    QWidget *tool_ = nullptr;
    QTabWidget *tabs_ = nullptr;
    QImage still_;
    unsigned long long firstCall_ = 0;
    int threadsBefore_ = 0;
};

void ScenariosTest::initTestCase()
{
    library_ = std::make_unique<SimulatedLibrary>();
    simulation_ = Simulation::find();
    QVERIFY(simulation_);
}

void ScenariosTest::init()
{
    firstCall_ = library_->journalLength();
}

void ScenariosTest::cleanup()
{
    window_.reset();
    scan_ = {};
}

void ScenariosTest::areAllExpected()
{
    QStringList shipped;
    for (const Simulation::Scenario &scenario : simulation_->scenarios())
        shipped += scenario.name;
    QStringList expected;
    for (const QStringList &line : dataLines(TEST_FOLDER "/expectations.txt", 6, 6))
        expected += line[0];
    QCOMPARE(expected, shipped);
}

void ScenariosTest::plays_data()
{
    addColumns<int, int, QString, QString, QStringList>("first", "last", "row", "picture", "boards");
    for (const QStringList &line : dataLines(TEST_FOLDER "/expectations.txt", 6, 6))
        addRow(qPrintable(line[0]), line[1].toInt(), line[2].toInt(), line[3], line[4],
               line[5].split(' ', Qt::SkipEmptyParts));
}

void ScenariosTest::plays()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(QString, row);
    QFETCH(QString, picture);
    QFETCH(QStringList, boards);
    const QString scenario = QString::fromUtf8(QTest::currentDataTag());
    QCOMPARE(simulation_->choose(scenario), QString());
    open();
    if (QTest::currentTestFailed())
        return;
    tabs_->setCurrentIndex(1);
    typeLine(*lineEditOf(*tool_), QStringLiteral("?"));
    QCOMPARE(label(), devicesFound(first));
    // Endless text is shown 300 ms after the last of it, so never while it goes on.
    if (scenario == "text-endless")
        typeLine(*lineEditOf(*tool_), QStringLiteral("."));
    if (first > 0)
        QTRY_VERIFY2_WITH_TIMEOUT(hasRow(row), qPrintable(itemRows(*tool_).join('\n')), timeoutMs);
    else
        QCOMPARE(itemRows(*tool_), QStringList());
    const QHash<QString, QStringList> wholeRows{
        {"timeline", {"a line of text from the timeline!.", ".!........   0a 21 04 01 02 03 04 05 06  07 "}}};
    for (const QString &whole : wholeRows.value(scenario))
        QTRY_VERIFY2_WITH_TIMEOUT(itemRows(*tool_).contains(whole), qPrintable(whole), timeoutMs);
    if (scenario == "text-endless")
        typeLine(*lineEditOf(*tool_), QStringLiteral("B"));
    showsPicture(picture);
    const QHash<QString, int> attaches{{"plug-storm", 501}, {"timeline", 3}, {"vanish", 2}};
    QTRY_VERIFY_WITH_TIMEOUT(calls().count("orvexAttach()") >= attaches.value(scenario, 1), timeoutMs);
    QTRY_COMPARE_WITH_TIMEOUT(label(), devicesFound(last), timeoutMs);
    closesCleanly(devicesFound(last), boards);
}

void ScenariosTest::open()
{
    threadsBefore_ = threadCount();
    scan_ = scanPlugins({QStringLiteral(PADSCOPE_PLUGIN_FOLDER)});
    QCOMPARE(scan_.errors, QStringList());
    QCOMPARE(scan_.plugins.size(), std::size_t(1));
    window_ = std::make_unique<HostWindow>(scan_.plugins);
    tool_ = window_->openTool(scan_.plugins[0]);
    QVERIFY(tool_);
    tabs_ = tabsOf(*tool_);
    QCOMPARE(tabCaptions(*tabs_), QStringList({QStringLiteral("Bar Graph"), QStringLiteral("Monitor")}));
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    still_ = barGraph();
}

void ScenariosTest::showsPicture(const QString &expected)
{
    tabs_->setCurrentIndex(0);
    const auto taken = simulation_->totals().delivered;
    if (expected == "meter") {
        QTRY_VERIFY_WITH_TIMEOUT(showsMeter(barGraph()), timeoutMs);
    } else if (expected == "bars") {
        QTRY_VERIFY_WITH_TIMEOUT(barGraph() != still_, timeoutMs);
        QVERIFY(!showsMeter(barGraph()));
    } else if (!simulation_->boards().empty()) {
        QTRY_VERIFY_WITH_TIMEOUT(simulation_->totals().delivered > taken + 10, timeoutMs);
    }
    if (expected == "still")
        QCOMPARE(barGraph(), still_);
}

void ScenariosTest::closesCleanly(const QString &expectedLabel, const QStringList &boards)
{
    window_->close();
    QCOMPARE(label(), expectedLabel + QStringLiteral(" <i>Paused</i>"));
    const QStringList all = calls();
    const QStringList closing = closingCalls(boards);
    QCOMPARE(all.mid(all.size() - closing.size()), closing);
    // nobody is called any more, by no thread
    QTRY_VERIFY2(threadCount() <= threadsBefore_, qPrintable(QString::number(threadCount())));
    const auto sent = simulation_->totals().sent;
    QVERIFY(!library_->waitDelivered(simulation_->totals().delivered + 1, 50));
    QCOMPARE(simulation_->totals().sent, sent);
}

QString ScenariosTest::label() const
{
    const QList<QLabel *> labels = tool_->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->text().contains(QStringLiteral("evice")))
            return label->text();
    }
    return {};
}

bool ScenariosTest::hasRow(const QString &pattern) const
{
    return !itemRows(*tool_).filter(QRegularExpression(pattern)).isEmpty();
}

QStringList ScenariosTest::calls() const
{
    QStringList texts;
    for (const std::string &call : library_->callsFrom(firstCall_))
        texts += QString::fromStdString(call);
    return texts;
}

QImage ScenariosTest::barGraph() const
{
    return tabs_->widget(0)->grab().toImage();
}

PADSCOPE_TESTS(ScenariosTest);
#include "tst_scenarios.moc"
