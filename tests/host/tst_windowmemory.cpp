#include <QSettings>

#include "host/examplehost.h"
#include "support/tests.h"
#include "windowmemory.h"

namespace {

/// One start of the host.
struct Start : ExampleHost
{
    explicit Start(QSettings &settings)
        : memory(*window, scan.plugins, settings)
    {
    }

    QString openTool() const { return window->openPlugin() ? window->openPlugin()->id : QString(); }

    WindowMemory memory;
};

} // namespace

class WindowMemoryTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { settings_.clear(); }
    void remembersPlaceAndTool();
    void remembersThatNoToolWasOpen();
    void restoresPlaceAlone();
    void ignoresToolThatIsGone();
    void ignoresDamagedSettings();

private:
    QSettings settings_{"Example", "windowmemory"};
};

void WindowMemoryTest::remembersPlaceAndTool()
{
    const QRect place(60, 70, 1100, 650);
    {
        const Start first(settings_);
        first.window->show();
        QVERIFY(first.window->openTool(first.tenth()));
        first.window->setGeometry(place);
        first.window->close();
    }
    Start second(settings_);
    QVERIFY(second.window->geometry() != place);
    second.memory.restore(true);
    QCOMPARE(second.openTool(), QString("Tenth"));
    QCOMPARE(second.window->geometry(), place);
}

void WindowMemoryTest::remembersThatNoToolWasOpen()
{
    settings_.setValue("tool", "Tenth");
    {
        Start first(settings_);
        first.memory.restore(true);
        QCOMPARE(first.openTool(), QString("Tenth"));
        first.window->closeTool();
        first.window->close();
    }
    Start second(settings_);
    second.memory.restore(true);
    QCOMPARE(second.openTool(), QString());
}

void WindowMemoryTest::restoresPlaceAlone()
{
    settings_.setValue("tool", "Tenth");
    Start start(settings_);
    start.memory.restore(false);
    QCOMPARE(start.openTool(), QString());
}

void WindowMemoryTest::ignoresToolThatIsGone()
{
    settings_.setValue("tool", "Third");
    Start start(settings_);
    start.memory.restore(true);
    QCOMPARE(start.openTool(), QString());
}

void WindowMemoryTest::ignoresDamagedSettings()
{
    settings_.setValue("tool", QByteArray("\0\xff", 2));
    const QByteArray truncated = QByteArray::fromHex("01d9d0cb000300007fffffff80000000");
    for (const QVariant &geometry : {QVariant(truncated), QVariant(QStringList{"a", "b"}), QVariant(7)}) {
        settings_.setValue("geometry", geometry);
        Start start(settings_);
        const QRect before = start.window->geometry();
        start.memory.restore(true);
        QCOMPARE(start.openTool(), QString());
        QCOMPARE(start.window->geometry(), before);
    }
}

PADSCOPE_TESTS(WindowMemoryTest);
#include "tst_windowmemory.moc"
