#include "host/examplehost.h"
#include "support/tests.h"

class PluginLoadingTest : public QObject
{
    Q_OBJECT

private slots:
    void ordersByNumber();
    void rejects_data();
    void rejects();
    void ignoresOtherFiles();
    void loadsAFileOnce();
    void deletesObjectAtUnloading();
};

void PluginLoadingTest::ordersByNumber()
{
    const ExampleFolder folder({"example_tenth", "example_second", "example_windowless"});
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.errors, QStringList());
    QCOMPARE(scan.plugins.size(), std::size_t(3));
    QCOMPARE(scan.plugins[0].id, QString("Second"));
    QCOMPARE(scan.plugins[1].id, QString("Windowless"));
    QCOMPARE(scan.plugins[2].id, QString("Tenth"));
    QCOMPARE(scan.plugins[2].category.number, 10);
}

void PluginLoadingTest::rejects_data()
{
    addColumns<QString, QByteArray, QString>("library", "content", "reason");

    const auto contentOf = [](const char *library) {
        QFile file(QString(EXAMPLE_LIBRARIES "/lib%1.so").arg(library));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    };
    const QByteArray whole = contentOf("example_tenth");
    addRow("text file", "text", QByteArray("hello\n"), "not a library");
    addRow("empty file", "empty", QByteArray(), "not a library");
    addRow("header alone", "header", QByteArray("\177ELF"), "no metadata, so not a Qt plugin");
    addRow("plain library", "plain", contentOf("plain_library"), "no metadata, so not a Qt plugin");
    addRow("half a plugin", "half", whole.left(whole.size() / 2), "no metadata, so not a Qt plugin");
    addRow("other interface", "foreign", contentOf("foreign_plugin"),
           "wrong interface, not com.corvane.tendro.plugin/1.1");
}

void PluginLoadingTest::rejects()
{
    QFETCH(QString, library);
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    const ExampleFolder folder({"example_second"});
    folder.addFile(library + ".so", content);
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.errors, QStringList(folder.path(library) + ".so: " + reason));
    QCOMPARE(scan.plugins.size(), std::size_t(1));
    QCOMPARE(scan.plugins[0].id, QString("Second"));
}

void PluginLoadingTest::ignoresOtherFiles()
{
    const ExampleFolder folder;
    folder.addFile("README", "hello\n");
    folder.addFile("archive.a", "hello\n");
    QVERIFY(QDir(folder.path()).mkdir("folder.so"));
    const PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(scan.errors, QStringList());
    QVERIFY(scan.plugins.empty());
}

void PluginLoadingTest::loadsAFileOnce()
{
    const ExampleFolder folder({"example_second"});
    QVERIFY(QFile::link(folder.path("example_second.so"), folder.path("link.so")));
    const PluginScan scan = scanPlugins({folder.path(), folder.path() + "/."});
    QCOMPARE(scan.errors, QStringList());
    QCOMPARE(scan.plugins.size(), std::size_t(1));
}

void PluginLoadingTest::deletesObjectAtUnloading()
{
    const ExampleFolder folder({"example_second"});
    PluginScan scan = scanPlugins({folder.path()});
    QCOMPARE(folder.events(), QStringList());
    scan.plugins.clear();
    QCOMPARE(folder.events(), QStringList("plugin destroyed"));
}

PADSCOPE_TESTS(PluginLoadingTest);
#include "tst_pluginloading.moc"
