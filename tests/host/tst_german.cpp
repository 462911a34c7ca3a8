#include "boardmenu.h"
#include "host/examplefolder.h"
#include "host/menuactions.h"
#include "hostwindow.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

#include <QMenu>
#include <QMenuBar>
#include <QPluginLoader>
#include <QTranslator>

namespace {

/// Letters that more than one of the captions has as its own.
QString sharedLetters(const QStringList &texts)
{
    QString seen;
    QString shared;
    for (const QString &text : texts) {
        const int mark = text.indexOf(QLatin1Char('&'));
        if (mark < 0 || text.mid(mark, 2) == QLatin1String("&&"))
            continue;
        const QChar letter = text.at(mark + 1).toLower();
        (seen.contains(letter) ? shared : seen) += letter;
    }
    return shared;
}

} // namespace

/// The host's window in German, with the simulator.
class GermanTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void namesMenus();
    void namesActions();
    void givesEachActionALetterOfItsOwn();
    void saysInGermanWhatFaultsDo();

private:
    QMenu *menu(int index) const { return window_->menuBar()->actions().at(index)->menu(); }

    const ExampleFolder folder_;
    const SimulatedLibrary library_;
    QTranslator german_;
    PluginScan scan_;
    std::unique_ptr<HostWindow> window_;
};

void GermanTest::initTestCase()
{
    QVERIFY(german_.load(QStringLiteral(PADSCOPE_TRANSLATIONS "/tendro-host_de.qm")));
    QCoreApplication::installTranslator(&german_);
    QVERIFY(folder_.addLibrary(QStringLiteral("example_second")));
    QVERIFY(folder_.addLibrary(QStringLiteral("example_tenth")));
    scan_ = scanPlugins({folder_.path()});
    window_ = std::make_unique<HostWindow>(scan_.plugins);
    new BoardMenu(*window_, *Simulation::find());
}

void GermanTest::namesMenus()
{
    // "basic" is no group that the host knows
    QCOMPARE(captions(window_->menuBar()->actions()),
             QStringList({QStringLiteral("&Datei"), QStringLiteral("&Basic"), QStringLiteral("&Erweitert"),
                          QStringLiteral("B&oard"), QStringLiteral("&Hilfe")}));
}

void GermanTest::namesActions()
{
    QCOMPARE(captions(menu(0)->actions()),
             QStringList({QStringLiteral("Werkzeug &schließen"), QStringLiteral("&Beenden")}));
    QCOMPARE(captions(menu(3)->actions()),
             QStringList({QStringLiteral("&Einstecken"), QStringLiteral("&Ausstecken"),
                          QStringLiteral("&Störung"), QStringLiteral("S&zenario: default")}));
    QCOMPARE(captions(menu(4)->actions()), QStringList(QStringLiteral("Ü&ber")));
}

void GermanTest::givesEachActionALetterOfItsOwn()
{
    QCOMPARE(sharedLetters({QStringLiteral("&Eins"), QStringLiteral("Zw&ei")}), QStringLiteral("e"));
    const QList<QMenu *> menus = window_->findChildren<QMenu *>();
    QVERIFY(menus.size() >= 8);
    for (const QMenu *each : menus)
        QVERIFY2(sharedLetters(captions(each->actions())).isEmpty(), qPrintable(each->title()));
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
