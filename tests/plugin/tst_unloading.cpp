#include <dlfcn.h>

#include <QAction>
#include <QFile>
#include <QPluginLoader>

#include "support/observedcalls.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

/// A host that removes the plugin from memory and goes on. Qt, which stays, must hold nothing of it: what it
/// does hold it reads at the latest when the program ends.
class UnloadingTests : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLeftOfTheFile();
    void pluginCanBeLoadedAgain();
    void unloadedWhileAnAttachIsToBeRepeated();
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

/// Attaches in a way that makes the tool attach once more, and unloads the plugin before that is due.
/// \return whether all of it worked
bool unloadBeforeRepeatedAttach()
{
    const DriverLibrary library("complete", {1});
    QPluginLoader loader(QStringLiteral(PADSCOPE_PLUGIN_FILE));
    loader.setLoadHints({});
    auto *plugin = qobject_cast<TendroPluginInterface *>(loader.instance());
    if (!plugin)
        return false;
    QWidget *widget = plugin->widget();
    bool isNotified = false;
    {
        const ObservedCalls observed(library, [&](const QString &call) {
            if (!call.startsWith("orvexSetXferMask") || std::exchange(isNotified, true))
                return;
            library->plug();
            QCoreApplication::processEvents();
        });
        QMetaObject::invokeMethod(widget, "AttachHardware", Qt::DirectConnection);
    }
    plugin->closeWidget();
    delete widget;
    return isNotified && loader.unload();
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

void UnloadingTests::unloadedWhileAnAttachIsToBeRepeated()
{
    QVERIFY(unloadBeforeRepeatedAttach());
    QVERIFY(!isInMemory());
    // Longer than the repeated attach would wait.
    QTest::qWait(20);
}

PADSCOPE_TESTS(UnloadingTests);
#include "tst_unloading.moc"
