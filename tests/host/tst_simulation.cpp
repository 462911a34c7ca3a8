#include "host/boardmenu.h"
#include "host/hostwindow.h"
#include "host/reportrates.h"
#include "host/simulation.h"
#include "tests/simulator/simulatedlibrary.h"
#include "tests/support/testmain.h"

#include <QActionGroup>
#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QStatusBar>

namespace {

QAction *actionNamed(const QMenu &menu, const char *caption)
{
    QStringList there;
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        if (action->text() == QLatin1String(caption))
            return action;
        there += action->text();
    }
    qFatal("no action %s; there is %s", caption, qPrintable(there.join(QStringLiteral(", "))));
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
    void saysWhatEachFaultDoes();
    void ticksFaultsThatStayOn();
    void keepsTheMessageWhenTheMenuCloses();
    void namesTheScenario();
    void opensAFileOfTheUsersOwn();
    void reloads();
    void tellsWhyAScenarioIsRefused();
    void showsRates();

private:
    QAction *plugAction() const { return menu_->actions().constFirst(); }
    QString message() const { return window_->statusBar()->currentMessage(); }
    void attach();
    /// Writes a scenario with this board alone.
    void writeScenario(int board) const;
    QString ownFile() const { return folder_.filePath(QStringLiteral("own & only.json")); }

    const QTemporaryDir folder_;

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
    unplugMenu_ = actionNamed(*menu_, "&Unplug")->menu();
    faultMenu_ = actionNamed(*menu_, "&Fault")->menu();
    scenarioMenu_ = actionNamed(*menu_, "&Scenario: default")->menu();
    QVERIFY(unplugMenu_ && faultMenu_ && scenarioMenu_);
}

void SimulationTest::cleanup()
{
    library_->orvexDetach();
    window_.reset();
}

void SimulationTest::attach()
{
    QCOMPARE(library_->orvexAttach(), 1);
    // a board takes events between two reports, and sends none to nobody
    library_->orvexSetCallback(1001, ignoreReport, nullptr);
}

void SimulationTest::writeScenario(int board) const
{
    QFile file(ownFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral(R"({"title": "Own", "boards": [{"id": %1}]})").arg(board).toUtf8());
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
    attach();
    faultMenu_->actions().at(faults.indexOf(QStringLiteral("vanish")))->trigger();
    QTRY_VERIFY(simulation_->boards().empty());
    QCOMPARE(message(), QStringLiteral("vanish: The first board is unplugged in the middle of a report."));
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

void SimulationTest::saysWhatEachFaultDoes()
{
    QVERIFY(faultMenu_->toolTipsVisible());
    const QList<QAction *> faults = faultMenu_->actions();
    QCOMPARE(faults.size(), 13);
    for (const QAction *fault : faults) {
        QVERIFY2(fault->statusTip().endsWith(QLatin1Char('.')), qPrintable(fault->text()));
        QCOMPARE(fault->toolTip(), fault->statusTip());
        QCOMPARE(fault->whatsThis(), fault->statusTip());
    }
    QCOMPARE(actionNamed(*faultMenu_, "slow-command")->statusTip(),
             QStringLiteral("The next command takes 2 s."));
}

void SimulationTest::ticksFaultsThatStayOn()
{
    attach();
    const auto ticked = [this] {
        emit faultMenu_->aboutToShow();
        QStringList names;
        const QList<QAction *> faults = faultMenu_->actions();
        for (const QAction *fault : faults) {
            if (fault->isChecked())
                names += fault->text();
        }
        return names;
    };
    QCOMPARE(ticked(), QStringList());
    actionNamed(*faultMenu_, "slow-command")->trigger();
    QAction *lying = actionNamed(*faultMenu_, "lying-count");
    lying->trigger();
    QCOMPARE(message(), QStringLiteral("lying-count: The library counts two boards more than there are."));
    QTRY_COMPARE(ticked(), QStringList(QStringLiteral("lying-count")));
    QCOMPARE(library_->orvexGetDeviceCount(), 3);
    lying->trigger();
    QCOMPARE(message(), QStringLiteral("lying-count is off."));
    QTRY_COMPARE(ticked(), QStringList());
    lying->trigger();
    library_->orvexDetach();
    QCOMPARE(ticked(), QStringList());
    // refused, so that it does not stay on
    lying->trigger();
    QCOMPARE(ticked(), QStringList());
}

void SimulationTest::keepsTheMessageWhenTheMenuCloses()
{
    attach();
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::activePopupWidget(), key); };
    QTest::keyClick(window_.get(), Qt::Key_B, Qt::AltModifier);
    QTRY_COMPARE(QApplication::activePopupWidget(), menu_);
    press(Qt::Key_F);
    QTRY_COMPARE(QApplication::activePopupWidget(), faultMenu_);
    press(Qt::Key_Up);
    QCOMPARE(message(), QStringLiteral("The library counts two boards more than there are."));
    press(Qt::Key_Up);
    QCOMPARE(message(), QStringLiteral("The first board cannot be enumerated."));
    press(Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activePopupWidget());
    QCoreApplication::processEvents();
    QCOMPARE(message(), QStringLiteral("enumeration-fails: The first board cannot be enumerated."));
}

void SimulationTest::namesTheScenario()
{
    QAction *flood = actionNamed(*scenarioMenu_, "flood: 10,000 reports a second from eight boards");
    QAction *one = actionNamed(*scenarioMenu_, "default: One board on which a pen writes");
    QVERIFY(flood->actionGroup() && flood->actionGroup()->isExclusive());
    QCOMPARE(flood->actionGroup(), one->actionGroup());
    flood->trigger();
    QVERIFY(flood->isChecked() && !one->isChecked());
    QCOMPARE(scenarioMenu_->title(), QStringLiteral("&Scenario: flood"));
    QCOMPARE(message(), QStringLiteral("Scenario: flood"));
}

void SimulationTest::opensAFileOfTheUsersOwn()
{
    writeScenario(7);
    actionNamed(*scenarioMenu_, "&Open...")->trigger();
    auto *dialog = window_->findChild<QFileDialog *>();
    QVERIFY(dialog && dialog->isVisible());
    dialog->selectFile(ownFile());
    dialog->accept();
    QCOMPARE(simulation_->boards(), std::vector<int>({7}));
    QCOMPARE(scenarioMenu_->title(), QStringLiteral("&Scenario: own && only.json"));
    QCOMPARE(message(), QStringLiteral("Scenario: ") + ownFile());
    QAction *own = actionNamed(*scenarioMenu_, "own && only.json");
    QVERIFY(own->isChecked() && own->isVisible());
    QCOMPARE(own->statusTip(), ownFile());
    // back and forth
    actionNamed(*scenarioMenu_, "no-boards: No board at all")->trigger();
    QVERIFY(!own->isChecked());
    own->trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({7}));
}

void SimulationTest::reloads()
{
    writeScenario(7);
    QCOMPARE(simulation_->choose(ownFile()), QString());
    writeScenario(8);
    actionNamed(*scenarioMenu_, "&Reload")->trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({8}));
}

void SimulationTest::tellsWhyAScenarioIsRefused()
{
    writeScenario(7);
    QCOMPARE(simulation_->choose(ownFile()), QString());
    QVERIFY(QFile::remove(ownFile()));
    actionNamed(*scenarioMenu_, "&Reload")->trigger();
    auto *box = window_->findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QCOMPARE(box->text(), ownFile() + QStringLiteral(": there is no such file; a scenario file is needed"));
    box->close();
    QCOMPARE(simulation_->boards(), std::vector<int>({7}));
}

void SimulationTest::showsRates()
{
    ReportRates rates(*simulation_);
    QCOMPARE(rates.text(), QStringLiteral("Reports a second: 0 sent, 0 delivered"));
    attach();
    static const QRegularExpression both(
        QStringLiteral("^Reports a second: [1-9][0-9]* sent, [1-9][0-9]* delivered$"));
    QTRY_VERIFY2(both.match(rates.text()).hasMatch(), qPrintable(rates.text()));
    library_->orvexDetach();
    QTRY_COMPARE(rates.text(), QStringLiteral("Reports a second: 0 sent, 0 delivered"));
}

PADSCOPE_TEST_MAIN(SimulationTest)
#include "tst_simulation.moc"
