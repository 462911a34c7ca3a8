#include <dlfcn.h>
#include <QAction>
#include <QFile>
#include <QPluginLoader>

#include "support/accesstree.h"
#include "support/observedcalls.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

/// A host that removes the plugin from memory and goes on, and may load it again. Qt, which stays, must hold
/// nothing of it: what it does hold it reads at the latest when the program ends.
class UnloadingTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void afterUse();
    void afterAScreenReaderHasReadIt();
    void whileAnAttachIsDeferred();

private:
    const QString icon{":/images/resources/qorvexgraph.png"};
    std::unique_ptr<QPluginLoader> loader;
    TendroPluginInterface *plugin = nullptr;
};

void UnloadingTests::init()
{
    QVERIFY(!QFile::exists(icon));
    loader = std::make_unique<QPluginLoader>(PADSCOPE_PLUGIN_FILE);
    // By default Qt keeps a plugin in memory for good.
    loader->setLoadHints({});
    plugin = qobject_cast<TendroPluginInterface *>(loader->instance());
    QVERIFY2(plugin, qPrintable(loader->errorString()));
    QVERIFY(QFile::exists(icon));
}

void UnloadingTests::cleanup()
{
    plugin->closeWidget();
    delete plugin->widget();
    QVERIFY(loader->unload());
    QVERIFY(!dlopen(PADSCOPE_PLUGIN_FILE, RTLD_NOW | RTLD_NOLOAD));
    QVERIFY(!QFile::exists(icon));
    // Asks every factory of accessible objects that is left.
    QLabel label("text");
    QCOMPARE(described(*accessOf(&label)), QString("StaticText: text"));
    // Longer than a deferred attach would wait.
    QTest::qWait(20);
}

void UnloadingTests::afterUse()
{
    QCOMPARE(plugin->action()->text(), QString("Padscope"));
    plugin->widget()->show();
    QCoreApplication::processEvents();
}

void UnloadingTests::afterAScreenReaderHasReadIt()
{
    QCOMPARE(namelessIn(accessOf(plugin->widget())), QStringList());
    for (const QAccessibleInterface *object : accessTree(accessOf(plugin->widget())))
        QVERIFY(object->isValid());
}

void UnloadingTests::whileAnAttachIsDeferred()
{
    const DriverLibrary library("complete", {1});
    bool isNotified = false;
    const ObservedCalls observed(library, [&](const QString &call) {
        if (!call.startsWith("orvexSetXferMask") || std::exchange(isNotified, true))
            return;
        library->plug();
        QCoreApplication::processEvents();
    });
    QMetaObject::invokeMethod(plugin->widget(), "AttachHardware", Qt::DirectConnection);
    QVERIFY(isNotified);
}

PADSCOPE_TESTS(UnloadingTests);
#include "tst_unloading.moc"
