#include <dlfcn.h>
#include <QAction>
#include <QFile>
#include <QJsonObject>
#include <QPluginLoader>
#include <QPointer>

#include "support/tests.h"
#include "tendroplugininterface.h"

/// The plugin file, as a host's loader sees it.
class LoaderTests : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { loader.unload(); }
    void metadataAreExactlyTheTable();
    void instanceAnswersToItsNames();
    void metaObjectDeclaresNothing();
    void operationsStandInTheirOrder();
    void instanceIsMadeOnceUntilDeleted();
    void iconIsASmallPicture();

private:
    QPluginLoader loader{PADSCOPE_PLUGIN_FILE};
};

/// The host's view of the interface, written down a second time: the order of the slots is binary interface.
/// Not in an unnamed namespace, where the compiler would see that no class implements it.
class InterfaceInOrder
{
public:
    virtual ~InterfaceInOrder() = default;
    virtual QString first() const = 0;
    virtual QString second() const = 0;
    virtual QString third() const = 0;
    virtual QString fourth() const = 0;
    virtual QString fifth() const = 0;
    virtual void sixth() = 0;
    virtual QAction *seventh() = 0;
    virtual QWidget *eighth() = 0;
};

namespace {

/// What the five texts are, and whether the last three operations work on one window.
[[gnu::no_sanitize("undefined")]] QStringList useInOrder(void *address)
{
    auto *plugin = static_cast<InterfaceInOrder *>(address);
    QStringList texts{plugin->first(), plugin->second(), plugin->third(), plugin->fourth(), plugin->fifth()};
    texts += plugin->seventh()->text();
    QWidget *window = plugin->eighth();
    window->show();
    plugin->sixth();
    texts += window->isVisible() ? "shown" : "closed";
    delete window;
    return texts;
}

} // namespace

void LoaderTests::metadataAreExactlyTheTable()
{
    // 329217 is 0x050601, Qt 5.6.1.
    const QJsonObject expected{{"IID", "com.corvane.tendro.tendropadscope"},
                               {"className", "TendroPadscope"},
                               {"MetaData", QJsonObject()},
                               {"debug", false},
                               {"version", 329217}};
    QCOMPARE(loader.metaData(), expected);
    QVERIFY(!loader.isLoaded());
}

void LoaderTests::instanceAnswersToItsNames()
{
    QObject *instance = loader.instance();
    QVERIFY2(instance, qPrintable(loader.errorString()));
    QVERIFY(!instance->parent());
    QCOMPARE(instance->metaObject()->className(), "TendroPadscope");
    auto *interface = qobject_cast<TendroPluginInterface *>(instance);
    QVERIFY(interface);
    QCOMPARE(instance->qt_metacast("TendroPadscope"), static_cast<void *>(instance));
    QCOMPARE(instance->qt_metacast("TendroPluginInterface"), static_cast<void *>(interface));
    QCOMPARE(instance->qt_metacast("com.corvane.tendro.plugin/1.1"), static_cast<void *>(interface));
    QVERIFY(!instance->qt_metacast("com.corvane.tendro.plugin/1.0"));
    QVERIFY(!instance->qt_metacast("com.corvane.tendro.tendropadscope"));
}

void LoaderTests::metaObjectDeclaresNothing()
{
    const QMetaObject *metaObject = loader.instance()->metaObject();
    QCOMPARE(metaObject->methodCount(), metaObject->methodOffset());
    QCOMPARE(metaObject->propertyCount(), metaObject->propertyOffset());
    QCOMPARE(metaObject->enumeratorCount(), metaObject->enumeratorOffset());
    QCOMPARE(metaObject->superClass()->className(), "QObject");
}

void LoaderTests::operationsStandInTheirOrder()
{
    void *address = loader.instance()->qt_metacast("TendroPluginInterface");
    QCOMPARE(useInOrder(address),
             QStringList({"TendroPadscope", "Board diagnostic tool.", "Copyright (c) 2010 Corvane",
                          "Version 1.0", "9/advanced/padscope", "Padscope", "closed"}));
}

void LoaderTests::instanceIsMadeOnceUntilDeleted()
{
    QVERIFY(loader.load());
    void *library = dlopen(PADSCOPE_PLUGIN_FILE, RTLD_NOW | RTLD_NOLOAD);
    const auto entry = reinterpret_cast<QObject *(*)()>(dlsym(library, "qt_plugin_instance"));
    QVERIFY(entry);

    const QPointer<QObject> first = entry();
    QCOMPARE(entry(), first.data());
    QCOMPARE(loader.instance(), first.data());

    delete first;
    const QPointer<QObject> second = entry();
    QVERIFY(qobject_cast<TendroPluginInterface *>(second));
    QCOMPARE(entry(), second.data());
    delete second;
    dlclose(library);
}

void LoaderTests::iconIsASmallPicture()
{
    QVERIFY(loader.load());
    QFile file(":/images/resources/qorvexgraph.png");
    QVERIFY(file.open(QIODevice::ReadOnly));
    // The header of a PNG: 48 (hex 30) by 48 pixels of 8 bits, of colour type 2, RGB without alpha.
    QCOMPARE(file.read(26).mid(12), QByteArray("IHDR\0\0\0\x30\0\0\0\x30\x08\x02", 14));
}

PADSCOPE_TESTS(LoaderTests);
#include "tst_loader.moc"
