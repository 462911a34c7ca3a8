#include "host/examplefolder.h"
#include "host/menuactions.h"
#include "hostwindow.h"
#include "support/tests.h"
#include "tendroplugininterface.h"

#include <QAction>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPluginLoader>
#include <QScreen>
#include <QSignalSpy>
#include <QToolBar>
#include <QToolButton>

class HostWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsGroupsInOrder();
    void showsActionsAsToolBar();
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

private:
    const LoadedPlugin &plugin(const char *id) const;
    QAction *action(const char *caption) const;

    std::unique_ptr<ExampleFolder> folder_;
    PluginScan scan_;
    std::unique_ptr<HostWindow> window_;
};

void HostWindowTest::init()
{
    folder_ = std::make_unique<ExampleFolder>();
    for (const char *target : {"example_second", "example_tenth", "example_windowless"})
        QVERIFY(folder_->addLibrary(QLatin1String(target)));
    scan_ = scanPlugins({folder_->path()});
    QCOMPARE(scan_.plugins.size(), std::size_t(3));
    window_ = std::make_unique<HostWindow>(scan_.plugins);
}

void HostWindowTest::cleanup()
{
    window_.reset();
    scan_ = {};
    folder_.reset();
}

const LoadedPlugin &HostWindowTest::plugin(const char *id) const
{
    return *std::find_if(scan_.plugins.begin(), scan_.plugins.end(),
                         [id](const LoadedPlugin &candidate) { return candidate.id == QLatin1String(id); });
}

QAction *HostWindowTest::action(const char *caption) const
{
    const QList<QAction *> actions = window_->findChildren<QAction *>();
    for (QAction *candidate : actions) {
        if (candidate->text() == QLatin1String(caption))
            return candidate;
    }
    qWarning() << "no action" << caption << "in" << captions(actions);
    return nullptr;
}

void HostWindowTest::showsGroupsInOrder()
{
    const QList<QAction *> menus = window_->menuBar()->actions();
    QCOMPARE(captions(menus), QStringList({QStringLiteral("&File"), QStringLiteral("&Basic"),
                                           QStringLiteral("&Advanced"), QStringLiteral("&Help")}));
    QCOMPARE(captions(menus[1]->menu()->actions()),
             QStringList({QStringLiteral("Second caption"), QStringLiteral("Windowless caption")}));
    QCOMPARE(captions(menus[2]->menu()->actions()), QStringList(QStringLiteral("Tenth caption")));
}

void HostWindowTest::showsActionsAsToolBar()
{
    auto *toolBar = window_->findChild<QToolBar *>();
    QVERIFY(toolBar);
    QCOMPARE(captions(toolBar->actions()),
             QStringList({QStringLiteral("Second caption"), QStringLiteral("Windowless caption"),
                          QStringLiteral("Tenth caption")}));
    auto *button = qobject_cast<QToolButton *>(toolBar->widgetForAction(toolBar->actions().constFirst()));
    QVERIFY(button);
    QCOMPARE(button->toolTip(), QStringLiteral("An <example>."));
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
}

void HostWindowTest::beginsAtAComfortableSize()
{
    // 900 by 700 where there is room for it and for the window manager's frame of 16 by 40
    const QSize room = window_->screen()->availableSize();
    QCOMPARE(window_->size(), QSize(qMin(900, room.width() - 16), qMin(700, room.height() - 40)));
}

void HostWindowTest::clipsNothing()
{
    QWidget *widget = window_->openTool(plugin("Second"));
    QVERIFY(widget);
    window_->show();
    QVERIFY(widget->isVisible());
    // the example asks for 950 pixels, more than the window's size without it
    QVERIFY2(widget->width() >= 950, qPrintable(QString::number(widget->width())));
    QVERIFY(widget->height() >= widget->sizeHint().height());
    QCOMPARE(widget->visibleRegion().boundingRect().size(), widget->size());
}

void HostWindowTest::shrinksNothing()
{
    window_->show();
    window_->resize(2000, 1500);
    QVERIFY(window_->openTool(plugin("Second")));
    QCOMPARE(window_->size(), QSize(2000, 1500));
}

void HostWindowTest::opensByAction()
{
    window_->show();
    plugin("Tenth").tool->action()->trigger();
    QCOMPARE(folder_->events(), QStringList(QStringLiteral("widget()")));
    QCOMPARE(window_->windowTitle(), QStringLiteral("Tenth - Tendro Host"));
    QVERIFY(plugin("Tenth").tool->widget()->isVisible());
}

void HostWindowTest::staysWithTheToolThatIsOpen()
{
    QWidget *widget = window_->openTool(plugin("Second"));
    QCOMPARE(window_->openTool(plugin("Second")), widget);
    QCOMPARE(folder_->events(), QStringList(QStringLiteral("widget()")));
}

void HostWindowTest::closesOneToolBeforeOpeningAnother()
{
    window_->openTool(plugin("Second"));
    window_->show();
    window_->openTool(plugin("Tenth"));
    QCOMPARE(folder_->events(), QStringList({QStringLiteral("widget()"), QStringLiteral("widget()"),
                                             QStringLiteral("closeWidget"), QStringLiteral("widget closed"),
                                             QStringLiteral("driver missing")}));
}

void HostWindowTest::closesToolAndOpensItAgain()
{
    QWidget *widget = window_->openTool(plugin("Second"));
    window_->show();
    QSignalSpy closing(window_.get(), &HostWindow::toolClosing);
    action("&Close Tool")->trigger();
    QCOMPARE(closing.count(), 1);
    QVERIFY(!widget->isVisible());
    QVERIFY(window_->isVisible());
    QVERIFY(!action("&Close Tool")->isEnabled());
    QCOMPARE(window_->windowTitle(), QStringLiteral("Tendro Host"));
    QCOMPARE(window_->openTool(plugin("Second")), widget);
    QVERIFY(widget->isVisible());
}

void HostWindowTest::closesToolWithTheWindow()
{
    window_->openTool(plugin("Second"));
    window_->show();
    action("&Quit")->trigger();
    QVERIFY(!window_->isVisible());
    QCOMPARE(folder_->events(),
             QStringList({QStringLiteral("widget()"), QStringLiteral("closeWidget"),
                          QStringLiteral("widget closed"), QStringLiteral("driver missing")}));
}

void HostWindowTest::closesToolBeforeDestroyingIt()
{
    window_->openTool(plugin("Second"));
    window_->show();
    window_.reset();
    scan_ = {};
    const QStringList events = folder_->events();
    QCOMPARE(events.mid(0, 5), QStringList({QStringLiteral("widget()"), QStringLiteral("closeWidget"),
                                            QStringLiteral("widget closed"), QStringLiteral("driver missing"),
                                            QStringLiteral("widget destroyed")}));
    // and then the three plugins
    QCOMPARE(events.mid(5),
             QStringList({QStringLiteral("plugin destroyed"), QStringLiteral("plugin destroyed"),
                          QStringLiteral("plugin destroyed")}));
}

void HostWindowTest::survivesToolWithoutWindow()
{
    QWidget *widget = window_->openTool(plugin("Second"));
    window_->show();
    QVERIFY(!window_->openTool(plugin("Windowless")));
    QVERIFY(widget->isVisible());
    plugin("Windowless").tool->action()->trigger();
    QVERIFY(widget->isVisible());
}

void HostWindowTest::tellsAboutTools()
{
    const QString second = QStringLiteral("Second\nAn <example>.\nCopyright (c) 2010 Example\nVersion 1.0");
    QVERIFY2(window_->aboutText().startsWith(second), qPrintable(window_->aboutText()));
    action("&About")->trigger();
    auto *box = window_->findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QCOMPARE(box->text(), window_->aboutText());
    QCOMPARE(box->textFormat(), Qt::PlainText);
    QCOMPARE(box->text().count(QStringLiteral("Copyright (c) 2010 Example")), 3);
}

PADSCOPE_TESTS(HostWindowTest);
#include "tst_hostwindow.moc"
