#include <dlfcn.h>

#include <QAction>
#include <QDir>
#include <QJsonObject>
#include <QMetaClassInfo>
#include <QPluginLoader>
#include <QPointer>
#include <QProcess>

#include "support/tests.h"
#include "tendroplugininterface.h"

/// The plugin file, as a host's loader sees it.
class LoaderTests : public QObject
{
    Q_OBJECT

private slots:
    void metadataAreExactlyTheTable();
    void instanceAnswersToItsNames();
    void metaObjectDeclaresNothing();
    void operationsStandInTheirOrder();
    void instanceIsMadeOnceUntilDeleted();
    void iconIsASmallPicture();
    void exportsNothingElse();
    void needsNoOtherQtModule();

private:
    QPluginLoader loader{QStringLiteral(PADSCOPE_PLUGIN_FILE)};
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

QByteArrayList outputLines(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s: %s", qPrintable(program), qPrintable(process.errorString()));
    return process.readAllStandardOutput().trimmed().split('\n');
}

} // namespace

void LoaderTests::metadataAreExactlyTheTable()
{
    const QJsonObject expected{
        {"IID", "com.corvane.tendro.tendropadscope"},
        {"className", "TendroPadscope"},
        {"MetaData", QJsonObject()},
        {"debug", false},
        {"version", 329217},
    };
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
    QVERIFY(loader.unload());
}

void LoaderTests::metaObjectDeclaresNothing()
{
    const QMetaObject *metaObject = loader.instance()->metaObject();
    QCOMPARE(metaObject->methodCount(), metaObject->methodOffset());
    QCOMPARE(metaObject->propertyCount(), metaObject->propertyOffset());
    QCOMPARE(metaObject->enumeratorCount(), metaObject->enumeratorOffset());
    QCOMPARE(metaObject->superClass()->className(), "QObject");
    QVERIFY(loader.unload());
}

void LoaderTests::operationsStandInTheirOrder()
{
    void *address = loader.instance()->qt_metacast("TendroPluginInterface");
    const QStringList expected{
        "TendroPadscope", "Board diagnostic tool.", "Copyright (c) 2010 Corvane",
        "Version 1.0",    "9/advanced/padscope",    "Padscope",
        "closed",
    };
    QCOMPARE(useInOrder(address), expected);
    QVERIFY(loader.unload());
}

void LoaderTests::instanceIsMadeOnceUntilDeleted()
{
    QVERIFY(loader.load());
    void *library = dlopen(PADSCOPE_PLUGIN_FILE, RTLD_NOW | RTLD_NOLOAD);
    QVERIFY(library);
    const auto entry = reinterpret_cast<QObject *(*)()>(dlsym(library, "qt_plugin_instance"));
    QVERIFY(entry);

    const QPointer<QObject> first = entry();
    QVERIFY(first);
    QCOMPARE(entry(), first.data());
    QCOMPARE(loader.instance(), first.data());

    delete first;
    QVERIFY(!first);
    const QPointer<QObject> second = entry();
    QVERIFY(second);
    QVERIFY(qobject_cast<TendroPluginInterface *>(second));
    QCOMPARE(entry(), second.data());
    delete second;
    dlclose(library);
    QVERIFY(loader.unload());
}

void LoaderTests::iconIsASmallPicture()
{
    QVERIFY(loader.load());
    QFile file(":/images/resources/qorvexgraph.png");
    QVERIFY(file.open(QIODevice::ReadOnly));
    // The header of a PNG: 48 (hex 30) by 48 pixels of 8 bits, of colour type 2, RGB without alpha.
    QCOMPARE(file.read(26).mid(12), QByteArray("IHDR\0\0\0\x30\0\0\0\x30\x08\x02", 14));
}

void LoaderTests::exportsNothingElse()
{
    QByteArrayList names;
    for (const QByteArray &line : outputLines(PADSCOPE_NM, {"-D", "--defined-only", PADSCOPE_PLUGIN_FILE}))
        names += line.split(' ').last();
    std::sort(names.begin(), names.end());
    QCOMPARE(names, QByteArrayList({"qt_plugin_instance", "qt_plugin_query_metadata"}));
}

void LoaderTests::needsNoOtherQtModule()
{
    QByteArrayList modules;
    for (const QByteArray &line : outputLines(PADSCOPE_READELF, {"-d", PADSCOPE_PLUGIN_FILE})) {
        if (line.contains("(NEEDED)") && line.contains("libQt"))
            modules += line.mid(line.indexOf('[')).trimmed();
    }
    std::sort(modules.begin(), modules.end());
    QCOMPARE(modules, QByteArrayList({"[libQt5Core.so.5]", "[libQt5Gui.so.5]", "[libQt5Widgets.so.5]"}));
}

PADSCOPE_TESTS(LoaderTests);
#include "tst_loader.moc"
