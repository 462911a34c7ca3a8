#include <memory>
#include <vector>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPluginLoader>
#include <QTabWidget>

#include "support/driverlibrary.h"
#include "support/markingtranslator.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

/// What the plugin's object tells the host, and the window and the action that it gives.
class IdentityTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void texts();
    void allTextsButTheCategoryAreTranslated();
    void actionIsCreatedOnce();
    void actionIsTranslatedWhenCreated();
    void widgetIsCreatedOnceAndDetached();
    void closeWidgetBeforeWidgetDoesNothing();
    void closeWidgetKeepsTheWindow();
    void closeWidgetDetachesTheBoards();
    void closeWidgetAfterTheHostHasDeletedTheWindow();
    void widgetAfterTheHostHasDeletedTheWindow();
    void pluginLeavesTheWindowToTheHost();

private:
    QPluginLoader loader{QStringLiteral(PADSCOPE_PLUGIN_FILE)};
    TendroPluginInterface *plugin = nullptr;
};

namespace {

/// Fills freed blocks of a window's size again, so that a use of them shows without a sanitizer too.
void overwriteFreedMemory()
{
    std::vector<std::unique_ptr<char[]>> blocks;
    for (std::size_t size = 64; size <= 1024; size += 16) {
        for (int i = 0; i < 20; ++i)
            blocks.push_back(std::make_unique<char[]>(size));
    }
}

/// The tool's windows that exist, shown or not.
QWidgetList toolWindows()
{
    QWidgetList windows;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("qorvexgraph"))
            windows += widget;
    }
    return windows;
}

} // namespace

void IdentityTests::init()
{
    plugin = qobject_cast<TendroPluginInterface *>(loader.instance());
    QVERIFY2(plugin, qPrintable(loader.errorString()));
}

void IdentityTests::cleanup()
{
    QVERIFY(loader.unload());
}

void IdentityTests::texts()
{
    QCOMPARE(plugin->id(), QStringLiteral("TendroPadscope"));
    QCOMPARE(plugin->description(), QStringLiteral("Board diagnostic tool."));
    QCOMPARE(plugin->copyright(), QStringLiteral("Copyright (c) 2010 Corvane"));
    QCOMPARE(plugin->version(), QStringLiteral("Version 1.0"));
    QCOMPARE(plugin->category(), QStringLiteral("9/advanced/padscope"));
}

void IdentityTests::allTextsButTheCategoryAreTranslated()
{
    const MarkingTranslator translator;
    QCOMPARE(plugin->id(), QStringLiteral("{TendroPadscope: TendroPadscope}"));
    QCOMPARE(plugin->description(), QStringLiteral("{TendroPadscope: Board diagnostic tool.}"));
    QCOMPARE(plugin->copyright(), QStringLiteral("{TendroPadscope: Copyright (c) 2010 Corvane}"));
    QCOMPARE(plugin->version(), QStringLiteral("{TendroPadscope: Version 1.0}"));
    QCOMPARE(plugin->category(), QStringLiteral("9/advanced/padscope"));
}

void IdentityTests::actionIsCreatedOnce()
{
    QAction *action = plugin->action();
    QVERIFY(action);
    QCOMPARE(plugin->action(), action);
    QCOMPARE(action->text(), QStringLiteral("Padscope"));
    QCOMPARE(action->toolTip(), QStringLiteral("Board diagnostic tool."));
    QCOMPARE(action->icon().availableSizes(), QList<QSize>({QSize(48, 48)}));
    QCOMPARE(action->parent(), loader.instance());
}

void IdentityTests::actionIsTranslatedWhenCreated()
{
    QAction *action = nullptr;
    {
        const MarkingTranslator translator;
        action = plugin->action();
    }
    QCOMPARE(action->text(),
             QStringLiteral("{TendroPadscope(This is the caption of a button that start a program call "
                            "padscope.): Padscope}"));
    QCOMPARE(action->toolTip(), QStringLiteral("{TendroPadscope: Board diagnostic tool.}"));
    // It keeps the texts of the time at which it was made.
    QCOMPARE(plugin->action()->toolTip(), QStringLiteral("{TendroPadscope: Board diagnostic tool.}"));
    QCOMPARE(plugin->description(), QStringLiteral("Board diagnostic tool."));
}

void IdentityTests::widgetIsCreatedOnceAndDetached()
{
    const DriverLibrary library("complete", {1});
    QWidget *widget = plugin->widget();
    QCOMPARE(plugin->widget(), widget);
    QVERIFY(widget->inherits("qorvexgraph"));
    QVERIFY(!widget->parent());
    QVERIFY(!widget->isVisible());
    QVERIFY(widget->findChild<QTabWidget *>());
    QCOMPARE(library.takeCalls(), QStringList());
    delete widget;
}

void IdentityTests::closeWidgetBeforeWidgetDoesNothing()
{
    const int before = QApplication::allWidgets().size();
    plugin->closeWidget();
    QCOMPARE(QApplication::allWidgets().size(), before);
}

void IdentityTests::closeWidgetKeepsTheWindow()
{
    QWidget *widget = plugin->widget();
    widget->show();
    plugin->closeWidget();
    QVERIFY(!widget->isVisible());
    QCOMPARE(plugin->widget(), widget);
    widget->show();
    QVERIFY(widget->isVisible());
    plugin->closeWidget();
    plugin->closeWidget();
    delete widget;
}

void IdentityTests::closeWidgetDetachesTheBoards()
{
    DriverLibrary library("complete", {1});
    QWidget *widget = plugin->widget();
    widget->show();
    QLineEdit *commandLine = widget->findChild<QLineEdit *>();
    QVERIFY(commandLine);
    QTest::keyClicks(commandLine, "A");
    QTest::keyClick(commandLine, Qt::Key_Return);
    QCOMPARE(library.takeCalls().last(), QStringLiteral("orvexSendCommand(1, \"A\\x0d\")"));

    plugin->closeWidget();
    QCOMPARE(library.takeCalls().last(), QStringLiteral("orvexDetach()"));
    library.close();
    QVERIFY(!DriverLibrary::isLoaded());
    delete widget;
}

void IdentityTests::closeWidgetAfterTheHostHasDeletedTheWindow()
{
    delete plugin->widget();
    overwriteFreedMemory();
    const int before = QApplication::allWidgets().size();
    plugin->closeWidget();
    QCOMPARE(QApplication::allWidgets().size(), before);
}

void IdentityTests::widgetAfterTheHostHasDeletedTheWindow()
{
    delete plugin->widget();
    for (int round = 0; round < 3; ++round) {
        QWidget *widget = plugin->widget();
        QCOMPARE(toolWindows(), QWidgetList{widget});
        QCOMPARE(plugin->widget(), widget);
        widget->show();
        QVERIFY(widget->isVisible());
        plugin->closeWidget();
        QVERIFY(!widget->isVisible());
        delete widget;
    }
}

void IdentityTests::pluginLeavesTheWindowToTheHost()
{
    const QPointer<QWidget> widget = plugin->widget();
    const QPointer<QAction> action = plugin->action();
    delete loader.instance();
    QVERIFY(!action);
    QVERIFY(widget);
    delete widget;
}

PADSCOPE_TESTS(IdentityTests);
#include "tst_identity.moc"
