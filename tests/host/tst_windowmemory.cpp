#include "host/examplefolder.h"
#include "hostwindow.h"
#include "support/tests.h"
#include "windowmemory.h"

#include <QPluginLoader>
#include <QSettings>

namespace {

/// One start of the host, with the tools "Second" and "Tenth".
struct Start
{
    Start(const ExampleFolder &folder, QSettings &settings)
        : scan(scanPlugins({folder.path()}))
        , window(scan.plugins)
        , memory(window, scan.plugins, settings)
    {
    }

    QString openTool() const { return window.openPlugin() ? window.openPlugin()->id : QString(); }

    PluginScan scan;
    HostWindow window;
    WindowMemory memory;
};

} // namespace

class WindowMemoryTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void remembersPlace();
    void remembersTool();
    void remembersThatNoToolWasOpen();
    void restoresPlaceAlone();
    void passesOverToolThatIsGone();
    void passesOverDamagedSettings();

private:
    ExampleFolder folder_;
    QSettings settings_{QStringLiteral("Example"), QStringLiteral("windowmemory")};
};

void WindowMemoryTest::initTestCase()
{
    QVERIFY(folder_.addLibrary(QStringLiteral("example_second")));
    QVERIFY(folder_.addLibrary(QStringLiteral("example_tenth")));
}

void WindowMemoryTest::init()
{
    settings_.clear();
}

void WindowMemoryTest::remembersPlace()
{
    {
        Start first(folder_, settings_);
        first.window.setGeometry(60, 70, 500, 400);
        first.window.show();
        first.window.close();
    }
    Start second(folder_, settings_);
    QVERIFY(second.window.geometry() != QRect(60, 70, 500, 400));
    second.memory.restore(true);
    QCOMPARE(second.window.geometry(), QRect(60, 70, 500, 400));
}

void WindowMemoryTest::remembersTool()
{
    {
        Start first(folder_, settings_);
        first.window.show();
        QVERIFY(first.window.openTool(first.scan.plugins[1]));
        first.window.close();
    }
    Start second(folder_, settings_);
    second.memory.restore(true);
    QCOMPARE(second.openTool(), QStringLiteral("Tenth"));
}

void WindowMemoryTest::remembersThatNoToolWasOpen()
{
    settings_.setValue(QStringLiteral("tool"), QStringLiteral("Tenth"));
    {
        Start first(folder_, settings_);
        first.memory.restore(true);
        QCOMPARE(first.openTool(), QStringLiteral("Tenth"));
        first.window.closeTool();
        first.window.close();
    }
    Start second(folder_, settings_);
    second.memory.restore(true);
    QCOMPARE(second.openTool(), QString());
}

void WindowMemoryTest::restoresPlaceAlone()
{
    settings_.setValue(QStringLiteral("tool"), QStringLiteral("Tenth"));
    Start start(folder_, settings_);
    start.memory.restore(false);
    QCOMPARE(start.openTool(), QString());
}

void WindowMemoryTest::passesOverToolThatIsGone()
{
    settings_.setValue(QStringLiteral("tool"), QStringLiteral("Third"));
    Start start(folder_, settings_);
    start.memory.restore(true);
    QCOMPARE(start.openTool(), QString());
}

void WindowMemoryTest::passesOverDamagedSettings()
{
    settings_.setValue(QStringLiteral("tool"), QByteArray("\0\xff", 2));
    const QByteArray truncated = QByteArray::fromHex("01d9d0cb000300007fffffff80000000");
    for (const QVariant &geometry : {QVariant(truncated), QVariant(QStringList{"a", "b"}), QVariant(7)}) {
        settings_.setValue(QStringLiteral("geometry"), geometry);
        Start start(folder_, settings_);
        const QRect before = start.window.geometry();
        start.memory.restore(true);
        QCOMPARE(start.openTool(), QString());
        QCOMPARE(start.window.geometry(), before);
    }
}

PADSCOPE_TESTS(WindowMemoryTest);
#include "tst_windowmemory.moc"
