#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStatusBar>

#include "boardmenu.h"
#include "host/examplehost.h"
#include "reportrates.h"
#include "simulation.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

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
    void triggersFaults();
    void tellsWhyAFaultDoesNotHappen();
    void choosesScenarios();
    void saysWhatEachFaultDoes();
    void ticksFaultsThatStayOn();
    void keepsTheMessageWhenTheMenuCloses();
    void showsRates();

private:
    QMenu &submenu(const char *caption) const { return *actionNamed(menu_->actions(), caption).menu(); }
    QString message() const { return window_->statusBar()->currentMessage(); }
    void attach() const;

    std::unique_ptr<SimulatedLibrary> library_;
    std::optional<Simulation> simulation_;
    const std::vector<LoadedPlugin> plugins_;
    std::unique_ptr<HostWindow> window_;
    QMenu *menu_ = nullptr;
    QMenu *faultMenu_ = nullptr;
};

namespace {

QStringList shownCaptions(QMenu &menu)
{
    emit menu.aboutToShow();
    return captions(menu.actions());
}

QStringList ticked(QMenu &menu)
{
    emit menu.aboutToShow();
    QList<QAction *> actions = menu.actions();
    actions.erase(std::remove_if(actions.begin(), actions.end(),
                                 [](const QAction *action) { return !action->isChecked(); }),
                  actions.end());
    return captions(actions);
}

} // namespace

void SimulationTest::initTestCase()
{
    QVERIFY(!Simulation::find());
    // Through a recorder's tap where there is one.
    const QByteArray file = qgetenv("PADSCOPE_TAP");
    library_ = std::make_unique<SimulatedLibrary>(file.isEmpty() ? SIMULATOR_FILE : file.constData());
    simulation_ = Simulation::find();
    QVERIFY(simulation_);
}

void SimulationTest::init()
{
    QCOMPARE(simulation_->choose("default"), QString());
    window_ = std::make_unique<HostWindow>(plugins_);
    new BoardMenu(*window_, *simulation_);
    menu_ = actionNamed(window_->menuBar()->actions(), "&Board").menu();
    faultMenu_ = &submenu("&Fault");
}

void SimulationTest::cleanup()
{
    library_->orvexDetach();
    window_.reset();
}

void SimulationTest::attach() const
{
    QCOMPARE(library_->orvexAttach(), 1);
    // a board takes events between two reports, and sends none without a callback
    const auto ignore = [](int, const unsigned char *, unsigned int, void *) {};
    library_->orvexSetCallback(1001, ignore, nullptr);
}

void SimulationTest::plugsIn()
{
    QAction &plug = actionNamed(menu_->actions(), "&Plug In");
    QCOMPARE(simulation_->boards(), std::vector<int>({1001}));
    plug.trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({1001, 1002}));
    QVERIFY(simulation_->unplug(1001));
    plug.trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({1002, 1001}));
    for (int board = 3; board <= 32; ++board)
        plug.trigger();
    QCOMPARE(message(), QString());
    plug.trigger();
    QCOMPARE(simulation_->boards().size(), std::size_t(32));
    QCOMPARE(message(), QString("No more boards can be plugged in."));
}

void SimulationTest::unplugs()
{
    QMenu &boards = submenu("&Unplug");
    QVERIFY(simulation_->plug(1002));
    QCOMPARE(shownCaptions(boards), QStringList({"Board 1001", "Board 1002"}));
    boards.actions().first()->trigger();
    QCOMPARE(simulation_->boards(), std::vector<int>({1002}));
    QCOMPARE(shownCaptions(boards), QStringList("Board 1002"));
    boards.actions().first()->trigger();
    QCOMPARE(shownCaptions(boards), QStringList("No board"));
    QVERIFY(!boards.actions().first()->isEnabled());
}

void SimulationTest::triggersFaults()
{
    attach();
    actionNamed(faultMenu_->actions(), "vanish").trigger();
    QTRY_VERIFY(simulation_->boards().empty());
    QCOMPARE(message(), QString("vanish: The first board is unplugged in the middle of a report."));
}

void SimulationTest::tellsWhyAFaultDoesNotHappen()
{
    actionNamed(faultMenu_->actions(), "vanish").trigger();
    QCOMPARE(message(), QString("vanish: nobody is attached to a board; attach first"));
}

void SimulationTest::choosesScenarios()
{
    actionNamed(submenu("&Scenario: default").actions(), "no-boards: No board at all").trigger();
    QVERIFY(simulation_->boards().empty());
    QCOMPARE(message(), QString("Scenario: no-boards"));
    submenu("&Scenario: no-boards");
}

void SimulationTest::saysWhatEachFaultDoes()
{
    QVERIFY(faultMenu_->toolTipsVisible());
    const QList<QAction *> faults = faultMenu_->actions();
    QCOMPARE(faults.size(), 13);
    for (const QAction *fault : faults) {
        QVERIFY2(fault->statusTip().endsWith('.'), qPrintable(fault->text()));
        QCOMPARE(fault->toolTip(), fault->statusTip());
        QCOMPARE(fault->whatsThis(), fault->statusTip());
    }
    QCOMPARE(actionNamed(faults, "slow-command").statusTip(), QString("The next command takes 2 s."));
}

void SimulationTest::ticksFaultsThatStayOn()
{
    attach();
    QCOMPARE(ticked(*faultMenu_), QStringList());
    actionNamed(faultMenu_->actions(), "slow-command").trigger();
    QAction &lying = actionNamed(faultMenu_->actions(), "lying-count");
    lying.trigger();
    QCOMPARE(message(), QString("lying-count: The library counts two boards more than there are."));
    QTRY_COMPARE(ticked(*faultMenu_), QStringList("lying-count"));
    QCOMPARE(library_->orvexGetDeviceCount(), 3);
    lying.trigger();
    QCOMPARE(message(), QString("lying-count is off."));
    QTRY_COMPARE(ticked(*faultMenu_), QStringList());
    lying.trigger();
    library_->orvexDetach();
    QCOMPARE(ticked(*faultMenu_), QStringList());
    // rejected, so that it does not stay on
    lying.trigger();
    QCOMPARE(ticked(*faultMenu_), QStringList());
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
    QCOMPARE(message(), QString("The library counts two boards more than there are."));
    press(Qt::Key_Up);
    QCOMPARE(message(), QString("The first board cannot be enumerated."));
    press(Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activePopupWidget());
    QCoreApplication::processEvents();
    QCOMPARE(message(), QString("enumeration-fails: The first board cannot be enumerated."));
}

void SimulationTest::showsRates()
{
    ReportRates rates(*simulation_);
    QCOMPARE(rates.text(), QString("Reports a second: 0 sent, 0 delivered"));
    attach();
    const QRegularExpression both("^Reports a second: [1-9][0-9]* sent, [1-9][0-9]* delivered$");
    QTRY_VERIFY2(both.match(rates.text()).hasMatch(), qPrintable(rates.text()));
    library_->orvexDetach();
    QTRY_COMPARE(rates.text(), QString("Reports a second: 0 sent, 0 delivered"));
}

PADSCOPE_TESTS(SimulationTest);
#include "tst_simulation.moc"
