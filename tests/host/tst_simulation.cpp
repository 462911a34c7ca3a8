#include "host/boardmenu.h"
#include "host/hostwindow.h"
#include "host/reportrates.h"
#include "host/simulation.h"
#include "tests/simulator/simulatedlibrary.h"
#include "tests/support/testmain.h"

#include <QMenu>
#include <QMenuBar>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QStatusBar>

namespace {

QMenu *menuNamed(const QMenu &parent, const char *caption)
{
    const QList<QAction *> actions = parent.actions();
    for (const QAction *action : actions) {
        if (action->text() == QLatin1String(caption))
            return action->menu();
    }
    return nullptr;
}

QStringList captions(QMenu &menu)
{
    emit menu.aboutToShow();
    QStringList texts;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions)
        texts += action->text();
    return texts;
}

void ignoreReport(int /*device*/, const unsigned char * /*bytes*/, unsigned int /*length*/,
                  void * /*context*/)
{
}

} // namespace

/// The menu "Board" and the status line, with the simulator as it is built.
class SimulationTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void plugsIn();
    void unplugs();
    void listsAndTriggersFaults();
    void tellsWhyAFaultDoesNotHappen();
    void listsAndChoosesScenarios();
    void showsRates();

private:
    QAction *plugAction() const { return menu_->actions().constFirst(); }

    std::unique_ptr<SimulatedLibrary> library_;
    std::optional<Simulation> simulation_;
    std::vector<LoadedPlugin> plugins_;
    std::unique_ptr<HostWindow> window_;
    QMenu *menu_ = nullptr;
    QMenu *unplugMenu_ = nullptr;
    QMenu *faultMenu_ = nullptr;
    QMenu *scenarioMenu_ = nullptr;
};

void SimulationTest::initTestCase()
{
    QVERIFY(!Simulation::find());
    library_ = std::make_unique<SimulatedLibrary>();
    simulation_ = Simulation::find();
    QVERIFY(simulation_);
}

void SimulationTest::init()
{
    QCOMPARE(simulation_->choose(QStringLiteral("default")), QString());
    window_ = std::make_unique<HostWindow>(plugins_);
    new BoardMenu(*window_, *simulation_);
    menu_ = window_->menuBar()->actions().at(1)->menu();
    QCOMPARE(menu_->title(), QStringLiteral("&Board"));
    unplugMenu_ = menuNamed(*menu_, "&Unplug");
    faultMenu_ = menuNamed(*menu_, "&Fault");
    scenarioMenu_ = menuNamed(*menu_, "&Scenario");
    QVERIFY(unplugMenu_ && faultMenu_ && scenarioMenu_);
}

void SimulationTest::cleanup()
{
    library_->orvexDetach();
    window_.reset();
}

void SimulationTest::plugsIn()
{
    QCOMPARE(simulation_->boards(), std::vector<int>({1001}));
    plugAction()->trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({1001, 1002}));
    QVERIFY(simulation_->unplug(1001));
    plugAction()->trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({1002, 1001}));
    for (int board = 3; board <= 32; ++board)
        plugAction()->trigger();
    QCOMPARE(window_->statusBar()->currentMessage(), QString());
    plugAction()->trigger();
    QCOMPARE(simulation_->boards().size(), std::size_t(32));
    QCOMPARE(window_->statusBar()->currentMessage(), QStringLiteral("No more boards can be plugged in."));
}

void SimulationTest::unplugs()
{
    plugAction()->trigger();
    QCOMPARE(captions(*unplugMenu_),
             QStringList({QStringLiteral("Board 1001"), QStringLiteral("Board 1002")}));
    unplugMenu_->actions().constFirst()->trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({1002}));
    QCOMPARE(captions(*unplugMenu_), QStringList(QStringLiteral("Board 1002")));
    unplugMenu_->actions().constFirst()->trigger();
    QCOMPARE(captions(*unplugMenu_), QStringList(QStringLiteral("No board")));
    QVERIFY(!unplugMenu_->actions().constFirst()->isEnabled());
}

void SimulationTest::listsAndTriggersFaults()
{
    const QStringList faults = captions(*faultMenu_);
    for (const char *fault : {"vanish", "plug-storm", "flood", "garbage", "slow-command"})
        QVERIFY2(faults.contains(QLatin1String(fault)), fault);
    QCOMPARE(library_->orvexAttach(), 1);
    // a board takes events between two reports, and sends none to nobody
    library_->orvexSetCallback(1001, ignoreReport, nullptr);
    faultMenu_->actions().at(faults.indexOf(QStringLiteral("vanish")))->trigger();
    QTRY_VERIFY(simulation_->boards().empty());
    QCOMPARE(window_->statusBar()->currentMessage(), QString());
}

void SimulationTest::tellsWhyAFaultDoesNotHappen()
{
    faultMenu_->actions().constFirst()->trigger();
    QCOMPARE(window_->statusBar()->currentMessage(),
             faultMenu_->actions().constFirst()->text() +
                 QStringLiteral(": nobody is attached to a board; attach first"));
}

void SimulationTest::listsAndChoosesScenarios()
{
    const QStringList scenarios = captions(*scenarioMenu_);
    const int one = scenarios.indexOf(QStringLiteral("default: One board on which a pen writes"));
    const int none = scenarios.indexOf(QStringLiteral("no-boards: No board at all"));
    QVERIFY2(one >= 0 && none >= 0, qPrintable(scenarios.join(QLatin1Char('\n'))));
    QVERIFY(scenarioMenu_->actions().at(one)->isChecked());
    scenarioMenu_->actions().at(none)->trigger();
    QCOMPARE(simulation_->currentScenario(), QStringLiteral("no-boards"));
    QVERIFY(simulation_->boards().empty());
    emit scenarioMenu_->aboutToShow();
    QVERIFY(!scenarioMenu_->actions().at(one)->isChecked());
    QVERIFY(scenarioMenu_->actions().at(none)->isChecked());
}

void SimulationTest::showsRates()
{
    ReportRates rates(*simulation_);
    QCOMPARE(rates.text(), QStringLiteral("Reports a second: 0 sent, 0 delivered"));
    QCOMPARE(library_->orvexAttach(), 1);
    library_->orvexSetCallback(1001, ignoreReport, nullptr);
    static const QRegularExpression both(
        QStringLiteral("^Reports a second: [1-9][0-9]* sent, [1-9][0-9]* delivered$"));
    QTRY_VERIFY2(both.match(rates.text()).hasMatch(), qPrintable(rates.text()));
    library_->orvexDetach();
    QTRY_COMPARE(rates.text(), QStringLiteral("Reports a second: 0 sent, 0 delivered"));
}

PADSCOPE_TEST_MAIN(SimulationTest)
#include "tst_simulation.moc"
