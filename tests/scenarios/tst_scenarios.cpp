#include "hostwindow.h"
#include "scenarios/expectations.h"
#include "simulation.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"
#include "support/waitingpackets.h"
#include "toolparts.h"

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QTabWidget>

Q_DECLARE_METATYPE(const Expectation *)

namespace {

constexpr int patienceMs = 30'000;

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
QStringList closingCalls(const std::vector<int> &boards)
{
    QStringList calls;
    for (const int board : boards) {
        const QString id = QString::number(board);
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
    void showsPicture(Picture expected);
    void closesCleanly(const Expectation &expected);

    QString label() const;
    bool hasRow(const char *pattern) const;
    int attaches() const { return calls().count(QStringLiteral("orvexAttach()")); }
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
    for (const Expectation &expectation : expectations())
        expected += QLatin1String(expectation.scenario);
    QCOMPARE(expected, shipped);
}

void ScenariosTest::plays_data()
{
    QTest::addColumn<const Expectation *>("expected");
    for (const Expectation &expectation : expectations())
        addRow(expectation.scenario, &expectation);
}

void ScenariosTest::plays()
{
    QFETCH(const Expectation *, expected);
    QCOMPARE(simulation_->choose(QLatin1String(expected->scenario)), QString());
    open();
    if (QTest::currentTestFailed())
        return;
    tabs_->setCurrentIndex(1);
    typeLine(*lineEditOf(*tool_), QStringLiteral("?"));
    QCOMPARE(label(), QLatin1String(expected->labelAtFirst));
    if (expected->command)
        typeLine(*lineEditOf(*tool_), QLatin1String(expected->command));
    if (expected->row)
        QTRY_VERIFY2_WITH_TIMEOUT(hasRow(expected->row), qPrintable(itemRows(*tool_).join('\n')), patienceMs);
    else
        QCOMPARE(itemRows(*tool_), QStringList());
    for (const char *row : expected->wholeRows)
        QTRY_VERIFY2_WITH_TIMEOUT(itemRows(*tool_).contains(QLatin1String(row)), row, patienceMs);
    if (expected->command)
        typeLine(*lineEditOf(*tool_), QStringLiteral("B"));
    showsPicture(expected->picture);
    QTRY_VERIFY_WITH_TIMEOUT(attaches() >= expected->attaches, patienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(label(), QLatin1String(expected->labelInTheEnd), patienceMs);
    closesCleanly(*expected);
}

void ScenariosTest::open()
{
    threadsBefore_ = threadCount();
    scan_ = scanPlugins({QStringLiteral(PADSCOPE_PLUGIN_FOLDER)});
    QCOMPARE(scan_.refusals, QStringList());
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

void ScenariosTest::showsPicture(Picture expected)
{
    tabs_->setCurrentIndex(0);
    const auto taken = simulation_->totals().delivered;
    switch (expected) {
    case Picture::Meter:
        QTRY_VERIFY_WITH_TIMEOUT(showsMeter(barGraph()), patienceMs);
        break;
    case Picture::Bars:
        QTRY_VERIFY_WITH_TIMEOUT(barGraph() != still_, patienceMs);
        QVERIFY(!showsMeter(barGraph()));
        break;
    case Picture::Still:
    case Picture::Any:
        if (!simulation_->boards().empty())
            QTRY_VERIFY_WITH_TIMEOUT(simulation_->totals().delivered > taken + 10, patienceMs);
        break;
    }
    if (expected == Picture::Still)
        QCOMPARE(barGraph(), still_);
}

void ScenariosTest::closesCleanly(const Expectation &expected)
{
    window_->close();
    QCOMPARE(label(), QLatin1String(expected.labelInTheEnd) + QStringLiteral(" <i>Paused</i>"));
    const QStringList all = calls();
    const QStringList closing = closingCalls(expected.boardsInTheEnd);
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

bool ScenariosTest::hasRow(const char *pattern) const
{
    return !itemRows(*tool_).filter(QRegularExpression(QLatin1String(pattern))).isEmpty();
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
