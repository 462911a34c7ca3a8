#include <dlfcn.h>

#include <QAction>
#include <QFile>
#include <QPluginLoader>

#include "plugin/tendroplugininterface.h"
#include "tests/support/testmain.h"

/// A host that removes the plugin from memory and goes on. Qt, which stays, must hold nothing of it: what it
/// does hold it reads at the latest when the program ends.
class UnloadingTests : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLeftOfTheFile();
    void pluginCanBeLoadedAgain();
};

namespace {

const QString icon(":/images/resources/qorvexgraph.png");

bool isInMemory()
{
    void *library = dlopen(PADSCOPE_PLUGIN_FILE, RTLD_NOW | RTLD_NOLOAD);
    if (library)
        dlclose(library);
    return library != nullptr;
}

/// Loads the plugin, uses it as hosts do, and unloads it. \return whether all of it worked
bool useOnce()
{
    QPluginLoader loader(QStringLiteral(PADSCOPE_PLUGIN_FILE));
    // By default Qt keeps a plugin in memory for good.
    loader.setLoadHints({});
    auto *plugin = qobject_cast<TendroPluginInterface *>(loader.instance());
    if (!plugin || !QFile::exists(icon) || plugin->action()->text().isEmpty())
        return false;
    QWidget *widget = plugin->widget();
    widget->show();
    QCoreApplication::processEvents();
    plugin->closeWidget();
    delete widget;
    return loader.unload();
}

} // namespace

void UnloadingTests::nothingIsLeftOfTheFile()
{
    QVERIFY(!QFile::exists(icon));
    QVERIFY(useOnce());
    QVERIFY(!isInMemory());
    QVERIFY(!QFile::exists(icon));
}

void UnloadingTests::pluginCanBeLoadedAgain()
{
    QVERIFY(useOnce());
    QVERIFY(useOnce());
    QVERIFY(!isInMemory());
}

PADSCOPE_TEST_MAIN(UnloadingTests)
#include "tst_unloading.moc"
