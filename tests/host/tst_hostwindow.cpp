#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QSignalSpy>
#include <QToolBar>
#include <QToolButton>

#include "host/examplehost.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

class HostWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void showsToolsInOrder();
    void beginsAtAComfortableSize();
    void clipsNothing();
    void shrinksNothing();
    void opensByAction();
    void staysWithTheToolThatIsOpen();
    void closesOneToolBeforeOpeningAnother();
    void closesToolAndOpensItAgain();
    void closesToolWithTheWindow();
    void closesToolBeforeDestroyingIt();
    void survivesToolWithoutWindow();
    void tellsAboutTools();
};

namespace {

QAction &actionOf(const ExampleHost &host, const char *caption)
{
    return actionNamed(host.window->findChildren<QAction *>(), caption);
}

} // namespace

void HostWindowTest::showsToolsInOrder()
{
    const ExampleHost host;
    const QList<QAction *> menus = host.window->menuBar()->actions();
    QCOMPARE(captions(menus), QStringList({"&File", "&Basic", "&Advanced", "&Help"}));
    QCOMPARE(captions(menus[1]->menu()->actions()), QStringList({"Second caption", "Windowless caption"}));
    QCOMPARE(captions(menus[2]->menu()->actions()), QStringList("Tenth caption"));

    auto *toolBar = host.window->findChild<QToolBar *>();
    QCOMPARE(captions(toolBar->actions()),
             QStringList({"Second caption", "Windowless caption", "Tenth caption"}));
    auto *button = qobject_cast<QToolButton *>(toolBar->widgetForAction(toolBar->actions().first()));
    QCOMPARE(button->toolTip(), QString("An <example>."));
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
}

void HostWindowTest::beginsAtAComfortableSize()
{
    const ExampleHost host;
    // 900 by 700 where there is room for it and for the window manager's frame of 16 by 40
    const QSize room = host.window->screen()->availableSize();
    QCOMPARE(host.window->size(), QSize(qMin(900, room.width() - 16), qMin(700, room.height() - 40)));
}

void HostWindowTest::clipsNothing()
{
    const ExampleHost host;
    QWidget *widget = host.window->openTool(host.second());
    host.window->show();
    QVERIFY(widget->isVisible());
    // the example asks for 950 pixels, more than the window's size without it
    QVERIFY2(widget->width() >= 950, qPrintable(QString::number(widget->width())));
    QVERIFY(widget->height() >= widget->sizeHint().height());
    QCOMPARE(widget->visibleRegion().boundingRect().size(), widget->size());
}

void HostWindowTest::shrinksNothing()
{
    const ExampleHost host;
    host.window->show();
    host.window->resize(2000, 1500);
    QVERIFY(host.window->openTool(host.second()));
    QCOMPARE(host.window->size(), QSize(2000, 1500));
}

void HostWindowTest::opensByAction()
{
    const ExampleHost host;
    host.window->show();
    host.tenth().tool->action()->trigger();
    QCOMPARE(host.folder.events(), QStringList("widget()"));
    QCOMPARE(host.window->windowTitle(), QString("Tenth - Tendro Host"));
    QVERIFY(host.tenth().tool->widget()->isVisible());
}

void HostWindowTest::staysWithTheToolThatIsOpen()
{
    const ExampleHost host;
    QWidget *widget = host.window->openTool(host.second());
    QCOMPARE(host.window->openTool(host.second()), widget);
    QCOMPARE(host.folder.events(), QStringList("widget()"));
}

void HostWindowTest::closesOneToolBeforeOpeningAnother()
{
    const ExampleHost host;
    host.window->openTool(host.second());
    host.window->show();
    host.window->openTool(host.tenth());
    QCOMPARE(host.folder.events(),
             QStringList({"widget()", "widget()", "closeWidget", "widget closed", "driver missing"}));
}

void HostWindowTest::closesToolAndOpensItAgain()
{
    const ExampleHost host;
    QWidget *widget = host.window->openTool(host.second());
    host.window->show();
    QSignalSpy closing(host.window.get(), &HostWindow::toolClosing);
    QAction &close = actionOf(host, "&Close Tool");
    close.trigger();
    QCOMPARE(closing.count(), 1);
    QVERIFY(!widget->isVisible());
    QVERIFY(host.window->isVisible());
    QVERIFY(!close.isEnabled());
    QCOMPARE(host.window->windowTitle(), QString("Tendro Host"));
    QCOMPARE(host.window->openTool(host.second()), widget);
    QVERIFY(widget->isVisible());
}

void HostWindowTest::closesToolWithTheWindow()
{
    const ExampleHost host;
    host.window->openTool(host.second());
    host.window->show();
    actionOf(host, "&Quit").trigger();
    QVERIFY(!host.window->isVisible());
    QCOMPARE(host.folder.events(),
             QStringList({"widget()", "closeWidget", "widget closed", "driver missing"}));
}

void HostWindowTest::closesToolBeforeDestroyingIt()
{
    ExampleHost host;
    host.window->openTool(host.second());
    host.window->show();
    host.window.reset();
    host.scan.plugins.clear();
    QCOMPARE(host.folder.events(),
             QStringList({"widget()", "closeWidget", "widget closed", "driver missing", "widget destroyed",
                          "plugin destroyed", "plugin destroyed", "plugin destroyed"}));
}

void HostWindowTest::survivesToolWithoutWindow()
{
    const ExampleHost host;
    QWidget *widget = host.window->openTool(host.second());
    host.window->show();
    QVERIFY(!host.window->openTool(host.windowless()));
    QVERIFY(widget->isVisible());
    host.windowless().tool->action()->trigger();
    QVERIFY(widget->isVisible());
}

void HostWindowTest::tellsAboutTools()
{
    const ExampleHost host;
    actionOf(host, "&About").trigger();
    auto *box = host.window->findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QCOMPARE(box->textFormat(), Qt::PlainText);
    const QString rest = "\nAn <example>.\nCopyright (c) 2010 Example\nVersion 1.0";
    QCOMPARE(box->text(), "Second" + rest + "\n\nWindowless" + rest + "\n\nTenth" + rest);
}

PADSCOPE_TESTS(HostWindowTest);
#include "tst_hostwindow.moc"
