#include <QMenu>
#include <QMenuBar>
#include <QTranslator>

#include "boardmenu.h"
#include "host/examplehost.h"
#include "replaymenu.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

/// The host's window in German, with the simulator.
class GermanTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void namesMenus();
    void namesActions();
    void saysInGermanWhatFaultsDo();

private:
    QMenu *menu(int index) const { return host_->window->menuBar()->actions().at(index)->menu(); }

    const SimulatedLibrary library_;
    QTranslator german_;
    std::unique_ptr<ExampleHost> host_;
};

void GermanTest::initTestCase()
{
    QVERIFY(german_.load(PADSCOPE_TRANSLATIONS "/tendro-host_de.qm"));
    QCoreApplication::installTranslator(&german_);
    host_ = std::make_unique<ExampleHost>();
    new BoardMenu(*host_->window, *Simulation::find());
    new ReplayMenu(*host_->window, *Simulation::find());
}

void GermanTest::namesMenus()
{
    // "basic" is no group that the host knows
    QCOMPARE(captions(host_->window->menuBar()->actions()),
             QStringList({"&Datei", "&Basic", "&Erweitert", "B&oard", "&Wiedergabe", "&Hilfe"}));
}

void GermanTest::namesActions()
{
    QCOMPARE(captions(menu(0)->actions()), QStringList({"Werkzeug &schließen", "&Beenden"}));
    QCOMPARE(captions(menu(3)->actions()),
             QStringList({"&Einstecken", "&Ausstecken", "&Störung", "S&zenario: default"}));
    QCOMPARE(captions(menu(4)->actions()), QStringList({"&Pause\tSpace", "&Schritt\tRight", "Sc&hneller\tUp",
                                                        "&Langsamer\tDown", "&Von vorn\tHome"}));
    QCOMPARE(captions(menu(5)->actions()), QStringList("Ü&ber"));
}

void GermanTest::saysInGermanWhatFaultsDo()
{
    const QList<QAction *> faults = menu(3)->actions().at(2)->menu()->actions();
    QCOMPARE(faults.size(), 13);
    for (const QAction *fault : faults) {
        const QByteArray name = fault->text().toUtf8();
        QVERIFY(!fault->statusTip().isEmpty());
        QVERIFY2(fault->statusTip() != QString::fromUtf8(library_.faultText(name)), name);
    }
}

PADSCOPE_TESTS(GermanTest);
#include "tst_german.moc"
