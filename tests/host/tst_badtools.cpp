#include <QMenuBar>
#include <QRegularExpression>

#include "host/examplehost.h"
#include "support/capturedoutput.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

/// The host outlives tools that break their word, and the tools beside them stay usable.
class BadToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void rejectsDuplicateId();
    void rejectsToolThatThrowsAtOnce_data();
    void rejectsToolThatThrowsAtOnce();
    void survivesToolThatThrows_data();
    void survivesToolThatThrows();
    void survivesNullAction();
};

void BadToolsTest::cleanup()
{
    qunsetenv("EXAMPLE_THROWS");
    qunsetenv("EXAMPLE_RETURNS_NULL");
}

void BadToolsTest::rejectsDuplicateId()
{
    const ExampleFolder folder({"example_second", "example_tenth"});
    const QString second = folder.path("example_second.so");
    QVERIFY(QFile::copy(second, folder.path("second_again.so")));
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.plugins.size(), std::size_t(2));
    QCOMPARE(scan.plugins[0].file, second);
    QCOMPARE(scan.errors,
             QStringList(folder.path("second_again.so") + ": its id \"Second\" is that of " + second));
    // that one is gone, the other is not
    QCOMPARE(folder.events(), QStringList("plugin destroyed"));
}

void BadToolsTest::rejectsToolThatThrowsAtOnce_data()
{
    QTest::addColumn<QString>("operation");
    addRow("when it is made", "constructor");
    addRow("when it tells its id", "id");
}

void BadToolsTest::rejectsToolThatThrowsAtOnce()
{
    QFETCH(QString, operation);
    qputenv("EXAMPLE_THROWS", "Second." + operation.toLatin1());
    const ExampleFolder folder({"example_second", "example_tenth"});
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.errors, QStringList(folder.path("example_second.so: it throws: no ") + operation));
    QCOMPARE(scan.plugins.size(), std::size_t(1));
    QCOMPARE(scan.plugins[0].id, QString("Tenth"));
}

void BadToolsTest::survivesToolThatThrows_data()
{
    addColumns<QString, QString, bool>("operation", "caption", "opens");
    addRow("action", "action", "Second", true);
    addRow("widget", "widget", "Second caption", false);
    addRow("closing", "closeWidget", "Second caption", true);
}

void BadToolsTest::survivesToolThatThrows()
{
    QFETCH(QString, operation);
    QFETCH(bool, opens);
    qputenv("EXAMPLE_THROWS", "Second." + operation.toLatin1());
    CapturedOutput errors(stderr);
    const ExampleHost host;
    host.window->show();
    QTEST(host.window->menuBar()->actions().at(1)->menu()->actions().at(0)->text(), "caption");
    const QWidget *tenth = host.window->openTool(host.tenth());
    const QWidget *second = host.window->openTool(host.second());
    QCOMPARE(second != nullptr, opens);
    QCOMPARE(tenth->isVisible(), !opens);
    QCOMPARE(host.window->openTool(host.tenth()), tenth);
    QVERIFY(tenth->isVisible());
    QVERIFY(!second || !second->isVisible());
    const QStringList lines = QString::fromUtf8(errors.text()).split('\n');
    QCOMPARE(
        lines.filter(QRegularExpression("^tendro-host: ")),
        QStringList(QString("tendro-host: %1: its %2() throws: no %2").arg(host.second().file, operation)));
}

void BadToolsTest::survivesNullAction()
{
    qputenv("EXAMPLE_RETURNS_NULL", "Second.action");
    const ExampleHost host;
    host.window->show();
    actionNamed(host.window->menuBar()->actions().at(1)->menu()->actions(), "Second").trigger();
    QVERIFY(host.second().tool->widget()->isVisible());
}

PADSCOPE_TESTS(BadToolsTest);
#include "tst_badtools.moc"
