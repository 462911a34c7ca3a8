#include "host/examplefolder.h"
#include "pluginloading.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

#include <QPluginLoader>

class PluginLoadingTest : public QObject
{
    Q_OBJECT

private slots:
    void ordersByNumber();
    void listsWithTabs();
    void refuses_data();
    void refuses();
    void refusesDamagedLibraryAndGoesOn();
    void passesOverOtherFiles();
    void loadsAFileOnce();
    void deletesObjectAtUnloading();
};

void PluginLoadingTest::ordersByNumber()
{
    const ExampleFolder folder;
    QVERIFY(folder.addLibrary(QStringLiteral("example_tenth")));
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    QVERIFY(folder.addLibrary(QStringLiteral("example_windowless")));
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.refusals, QStringList());
    QCOMPARE(scan.plugins.size(), std::size_t(3));
    QCOMPARE(scan.plugins[0].id, QStringLiteral("Second"));
    QCOMPARE(scan.plugins[1].id, QStringLiteral("Windowless"));
    QCOMPARE(scan.plugins[2].id, QStringLiteral("Tenth"));
    QCOMPARE(scan.plugins[2].category.number, 10);
}

void PluginLoadingTest::listsWithTabs()
{
    const ExampleFolder folder;
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.plugins.size(), std::size_t(1));
    QCOMPARE(listLine(scan.plugins[0]), QStringLiteral("Second\t2/basic/second\tVersion 1.0\t") +
                                            folder.filePath(QStringLiteral("example_second.so\n")));
}

void PluginLoadingTest::refuses_data()
{
    addColumns<QString, QByteArray, QString>("library", "content", "reason");

    addRow("text file", "text", QByteArray("hello\n"), "not a library");
    addRow("empty file", "empty", QByteArray(), "not a library");
    addRow("header alone", "header", QByteArray("\177ELF"), "no metadata, so not a Qt plugin");
    addRow("plain library", "plain_library", QByteArray(), "no metadata, so not a Qt plugin");
    addRow("other interface", "foreign_plugin", QByteArray(),
           "wrong interface, not com.corvane.tendro.plugin/1.1");
}

void PluginLoadingTest::refuses()
{
    QFETCH(QString, library);
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    const ExampleFolder folder;
    if (!folder.addLibrary(library))
        QVERIFY(folder.addFile(library + QStringLiteral(".so"), content));
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.refusals, QStringList(folder.filePath(library) + QStringLiteral(".so: ") + reason));
    QCOMPARE(scan.plugins.size(), std::size_t(1));
    QCOMPARE(scan.plugins[0].id, QStringLiteral("Second"));
}

void PluginLoadingTest::refusesDamagedLibraryAndGoesOn()
{
    const ExampleFolder folder;
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    QVERIFY(folder.addLibrary(QStringLiteral("example_tenth")));
    QFile damaged(folder.filePath(QStringLiteral("example_tenth.so")));
    QVERIFY(damaged.resize(damaged.size() / 2));
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.plugins.size(), std::size_t(1));
    QCOMPARE(scan.plugins[0].id, QStringLiteral("Second"));
    QCOMPARE(scan.refusals.size(), 1);
    QVERIFY2(scan.refusals[0].startsWith(damaged.fileName() + QStringLiteral(": ")),
             qPrintable(scan.refusals[0]));
}

void PluginLoadingTest::passesOverOtherFiles()
{
    const ExampleFolder folder;
    QVERIFY(folder.addFile(QStringLiteral("README"), "hello\n"));
    QVERIFY(folder.addFile(QStringLiteral("archive.a"), "hello\n"));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder.so")));
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.refusals, QStringList());
    QVERIFY(scan.plugins.empty());
}

void PluginLoadingTest::loadsAFileOnce()
{
    const ExampleFolder folder;
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("example_second.so")),
                        folder.filePath(QStringLiteral("link.so"))));
    const PluginScan scan = scanPlugins({folder.path(), folder.path() + QStringLiteral("/.")});
    QCOMPARE(scan.refusals, QStringList());
    QCOMPARE(scan.plugins.size(), std::size_t(1));
}

void PluginLoadingTest::deletesObjectAtUnloading()
{
    const ExampleFolder folder;
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.plugins.size(), std::size_t(1));
    QCOMPARE(folder.events(), QStringList());
    scan.plugins.clear();
    QCOMPARE(folder.events(), QStringList(QStringLiteral("plugin destroyed")));
}

PADSCOPE_TESTS(PluginLoadingTest);
#include "tst_pluginloading.moc"
