#include "boardmenu.h"
#include "host/menuactions.h"
#include "hostwindow.h"
#include "reportrates.h"
#include "simulation.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

#include <QMenuBar>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QStatusBar>

namespace {

QStringList captions(QMenu &menu)
{
    emit menu.aboutToShow();
    return captions(menu.actions());
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
    void choosesScenarios();
    void saysWhatEachFaultDoes();
    void ticksFaultsThatStayOn();
    void keepsTheMessageWhenTheMenuCloses();
    void showsRates();

private:
    QAction *plugAction() const { return menu_->actions().constFirst(); }
    QString message() const { return window_->statusBar()->currentMessage(); }
    void attach();

    std::unique_ptr<SimulatedLibrary> library_;
    std::optional<Simulation> simulation_;
    std::vector<LoadedPlugin> plugins_;
    std::unique_ptr<HostWindow> window_;
    QMenu *menu_ = nullptr;
    QMenu *unplugMenu_ = nullptr;
    QMenu *faultMenu_ = nullptr;
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
    QVERIFY(unplugMenu_ && faultMenu_);
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

void SimulationTest::choosesScenarios()
{
    QMenu *scenarios = actionNamed(*menu_, "&Scenario: default")->menu();
    actionNamed(*scenarios, "no-boards: No board at all")->trigger();
    QVERIFY(simulation_->boards().empty());
    QCOMPARE(message(), QStringLiteral("Scenario: no-boards"));
    QVERIFY(actionNamed(*menu_, "&Scenario: no-boards"));
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

PADSCOPE_TESTS(SimulationTest);
#include "tst_simulation.moc"
