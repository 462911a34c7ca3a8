#include "host/examplefolder.h"
#include "hostwindow.h"
#include "support/capturedoutput.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

#include <QAction>
#include <QMenuBar>
#include <QPluginLoader>

/// The host outlives tools that break their word, and the tools beside them stay usable.
class BadToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void refusesDuplicateId();
    void refusesToolThatThrowsAtOnce_data();
    void refusesToolThatThrowsAtOnce();
    void survivesThrowingAction();
    void survivesNullAction();
    void survivesThrowingWidget();
    void survivesThrowingClose();

private:
    /// Loads the example tools, of which "Second" comes first.
    void scan();
    QByteArray fileOf(const char *target) const
    {
        return QFile::encodeName(folder_->filePath(QLatin1String(target))) + ".so";
    }

    std::unique_ptr<ExampleFolder> folder_;
    PluginScan scan_;
};

void BadToolsTest::init()
{
    folder_ = std::make_unique<ExampleFolder>();
    QVERIFY(folder_->addLibrary(QStringLiteral("example_second")));
    QVERIFY(folder_->addLibrary(QStringLiteral("example_tenth")));
}

void BadToolsTest::cleanup()
{
    scan_ = {};
    folder_.reset();
    qunsetenv("EXAMPLE_THROWS");
    qunsetenv("EXAMPLE_RETURNS_NULL");
}

void BadToolsTest::scan()
{
    scan_ = scanPlugins({folder_->path()});
    QCOMPARE(scan_.plugins.size(), std::size_t(2));
    QCOMPARE(scan_.plugins[0].id, QStringLiteral("Second"));
}

void BadToolsTest::refusesDuplicateId()
{
    QVERIFY(QFile::copy(folder_->filePath(QStringLiteral("example_second.so")),
                        folder_->filePath(QStringLiteral("second_again.so"))));
    const PluginScan all = scanPlugins({folder_->path()});
    QCOMPARE(all.plugins.size(), std::size_t(2));
    QCOMPARE(all.plugins[0].file, folder_->filePath(QStringLiteral("example_second.so")));
    QCOMPARE(
        all.refusals,
        QStringList(QStringLiteral("%1/second_again.so: its id \"Second\" is that of %1/example_second.so")
                        .arg(folder_->path())));
    // the refused one is gone, the other is not
    QCOMPARE(folder_->events(), QStringList(QStringLiteral("plugin destroyed")));
}

void BadToolsTest::refusesToolThatThrowsAtOnce_data()
{
    QTest::addColumn<QByteArray>("operation");
    addRow("when it is made", QByteArray("constructor"));
    addRow("when it tells its id", QByteArray("id"));
}

void BadToolsTest::refusesToolThatThrowsAtOnce()
{
    QFETCH(QByteArray, operation);
    qputenv("EXAMPLE_THROWS", "Second." + operation);
    const PluginScan rest = scanPlugins({folder_->path()});
    QCOMPARE(rest.refusals, QStringList(QStringLiteral("%1/example_second.so: it throws: no %2")
                                            .arg(folder_->path(), QLatin1String(operation))));
    QCOMPARE(rest.plugins.size(), std::size_t(1));
    QCOMPARE(rest.plugins[0].id, QStringLiteral("Tenth"));
}

void BadToolsTest::survivesThrowingAction()
{
    scan();
    qputenv("EXAMPLE_THROWS", "Second.action");
    CapturedOutput errors(stderr);
    const HostWindow window(scan_.plugins);
    QCOMPARE(errors.text(),
             "tendro-host: " + fileOf("example_second") + ": its action() throws: no action\n");
    QCOMPARE(window.menuBar()->actions().at(1)->menu()->actions().at(0)->text(), QStringLiteral("Second"));
}

void BadToolsTest::survivesNullAction()
{
    scan();
    qputenv("EXAMPLE_RETURNS_NULL", "Second.action");
    HostWindow window(scan_.plugins);
    window.show();
    QAction *action = window.menuBar()->actions().at(1)->menu()->actions().at(0);
    QCOMPARE(action->text(), QStringLiteral("Second"));
    action->trigger();
    QVERIFY(scan_.plugins[0].tool->widget()->isVisible());
}

void BadToolsTest::survivesThrowingWidget()
{
    scan();
    HostWindow window(scan_.plugins);
    window.show();
    const QWidget *tenth = window.openTool(scan_.plugins[1]);
    QVERIFY(tenth);
    qputenv("EXAMPLE_THROWS", "Second.widget");
    CapturedOutput errors(stderr);
    QVERIFY(!window.openTool(scan_.plugins[0]));
    QCOMPARE(errors.text(),
             "tendro-host: " + fileOf("example_second") + ": its widget() throws: no widget\n");
    QVERIFY(tenth->isVisible());
}

void BadToolsTest::survivesThrowingClose()
{
    scan();
    HostWindow window(scan_.plugins);
    window.show();
    const QWidget *second = window.openTool(scan_.plugins[0]);
    qputenv("EXAMPLE_THROWS", "Second.closeWidget");
    CapturedOutput errors(stderr);
    const QWidget *tenth = window.openTool(scan_.plugins[1]);
    QCOMPARE(errors.text(),
             "tendro-host: " + fileOf("example_second") + ": its closeWidget() throws: no closeWidget\n");
    QVERIFY(!second->isVisible());
    QVERIFY(tenth->isVisible());
}

PADSCOPE_TESTS(BadToolsTest);
#include "tst_badtools.moc"
