#include <QAction>
#include <QLineEdit>
#include <QPluginLoader>
#include <QPointer>
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
    void cleanup() { QVERIFY(loader.unload()); }
    void allTextsButTheCategoryAreTranslated();
    void actionIsCreatedOnce();
    void widgetIsCreatedOnce();
    void closeWidgetWithoutAWindowDoesNothing();
    void closeWidgetDetachesTheBoards();
    void widgetAfterTheHostHasDeletedTheWindow();
    void pluginLeavesTheWindowToTheHost();

private:
    QPluginLoader loader{PADSCOPE_PLUGIN_FILE};
    TendroPluginInterface *plugin = nullptr;
};

void IdentityTests::init()
{
    plugin = qobject_cast<TendroPluginInterface *>(loader.instance());
    QVERIFY2(plugin, qPrintable(loader.errorString()));
}

void IdentityTests::allTextsButTheCategoryAreTranslated()
{
    {
        const MarkingTranslator translator;
        QCOMPARE(plugin->id(), QString("{TendroPadscope: TendroPadscope}"));
        QCOMPARE(plugin->description(), QString("{TendroPadscope: Board diagnostic tool.}"));
        QCOMPARE(plugin->copyright(), QString("{TendroPadscope: Copyright (c) 2010 Corvane}"));
        QCOMPARE(plugin->version(), QString("{TendroPadscope: Version 1.0}"));
        QCOMPARE(plugin->category(), QString("9/advanced/padscope"));
        plugin->action();
    }
    // The action keeps the texts of the time at which it was made.
    QCOMPARE(plugin->action()->text(), QString("{TendroPadscope(This is the caption of a button that start a "
                                               "program call padscope.): Padscope}"));
    QCOMPARE(plugin->action()->toolTip(), QString("{TendroPadscope: Board diagnostic tool.}"));
}

void IdentityTests::actionIsCreatedOnce()
{
    QAction *action = plugin->action();
    QCOMPARE(plugin->action(), action);
    QCOMPARE(action->text(), QString("Padscope"));
    QCOMPARE(action->toolTip(), QString("Board diagnostic tool."));
    QCOMPARE(action->icon().availableSizes(), QList<QSize>({QSize(48, 48)}));
    QCOMPARE(action->parent(), loader.instance());
}

void IdentityTests::widgetIsCreatedOnce()
{
    const DriverLibrary library("complete", {1});
    QWidget *widget = plugin->widget();
    QVERIFY(widget->inherits("qorvexgraph"));
    QVERIFY(!widget->parent());
    QVERIFY(!widget->isVisible());
    QVERIFY(widget->findChild<QTabWidget *>());
    QCOMPARE(library.takeCalls(), QStringList());
    for (int round = 0; round < 2; ++round) {
        widget->show();
        QVERIFY(widget->isVisible());
        plugin->closeWidget();
        QVERIFY(!widget->isVisible());
        QCOMPARE(plugin->widget(), widget);
    }
    plugin->closeWidget();
    delete widget;
}

void IdentityTests::closeWidgetWithoutAWindowDoesNothing()
{
    const int before = QApplication::allWidgets().size();
    plugin->closeWidget();
    QCOMPARE(QApplication::allWidgets().size(), before);
    delete plugin->widget();
    plugin->closeWidget();
    QCOMPARE(QApplication::allWidgets().size(), before);
}

void IdentityTests::closeWidgetDetachesTheBoards()
{
    DriverLibrary library("complete", {1});
    QWidget *widget = plugin->widget();
    widget->show();
    auto *commandLine = widget->findChild<QLineEdit *>();
    QTest::keyClicks(commandLine, "A");
    QTest::keyClick(commandLine, Qt::Key_Return);
    QCOMPARE(library.takeCalls().last(), QString("orvexSendCommand(1, \"A\\x0d\")"));

    plugin->closeWidget();
    QCOMPARE(library.takeCalls().last(), QString("orvexDetach()"));
    library.close();
    QVERIFY(!DriverLibrary::isLoaded());
    delete widget;
}

void IdentityTests::widgetAfterTheHostHasDeletedTheWindow()
{
    delete plugin->widget();
    QWidget *widget = plugin->widget();
    QVERIFY(QApplication::topLevelWidgets().contains(widget));
    QCOMPARE(plugin->widget(), widget);
    widget->show();
    plugin->closeWidget();
    QVERIFY(!widget->isVisible());
    delete widget;
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
