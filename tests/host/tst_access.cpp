#include "host/examplefolder.h"
#include "hostwindow.h"
#include "support/tests.h"

#include <QAccessible>
#include <QMenuBar>
#include <QMessageBox>
#include <QPluginLoader>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

/// The host by keyboard, by screen reader and in the user's colours.
class AccessTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void givesMenusLettersOfTheirOwn();
    void hasEveryToolInAMenu();
    void opensToolsByNumber();
    void closesByKey();
    void tellsAboutItselfByKey();
    void namesItsParts();
    void followsThePalette_data();
    void followsThePalette();

private:
    std::unique_ptr<ExampleFolder> folder_;
    PluginScan scan_;
    std::unique_ptr<HostWindow> window_;
};

void AccessTest::init()
{
    folder_ = std::make_unique<ExampleFolder>();
    QVERIFY(folder_->addLibrary(QStringLiteral("example_second")));
    QVERIFY(folder_->addLibrary(QStringLiteral("example_tenth")));
    scan_ = scanPlugins({folder_->path()});
    QCOMPARE(scan_.plugins.size(), std::size_t(2));
    window_ = std::make_unique<HostWindow>(scan_.plugins);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void AccessTest::cleanup()
{
    window_.reset();
    scan_ = {};
    folder_.reset();
}

void AccessTest::givesMenusLettersOfTheirOwn()
{
    QCOMPARE(window_->addMenu(QStringLiteral("Board"))->title(), QStringLiteral("B&oard"));
    QCOMPARE(window_->addMenu(QStringLiteral("boa & Co"))->title(), QStringLiteral("boa && &Co"));
    QCOMPARE(window_->addMenu(QStringLiteral("Fab"))->title(), QStringLiteral("Fab"));
    QStringList titles;
    const QList<QAction *> menus = window_->menuBar()->actions();
    for (const QAction *menu : menus)
        titles += menu->text();
    QCOMPARE(titles,
             QStringList({QStringLiteral("&File"), QStringLiteral("&Basic"), QStringLiteral("&Advanced"),
                          QStringLiteral("B&oard"), QStringLiteral("boa && &Co"), QStringLiteral("Fab"),
                          QStringLiteral("&Help")}));
}

void AccessTest::hasEveryToolInAMenu()
{
    const QList<QAction *> tools = window_->findChild<QToolBar *>()->actions();
    QCOMPARE(tools.size(), 2);
    for (QAction *tool : tools) {
        const QList<QWidget *> places = tool->associatedWidgets();
        QVERIFY(std::any_of(places.begin(), places.end(),
                            [](QWidget *place) { return qobject_cast<QMenu *>(place); }));
    }
}

void AccessTest::opensToolsByNumber()
{
    QTest::keyClick(window_.get(), Qt::Key_2, Qt::ControlModifier);
    QVERIFY(window_->openPlugin());
    QCOMPARE(window_->openPlugin()->id, QStringLiteral("Tenth"));
    QTest::keyClick(window_.get(), Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(window_->openPlugin()->id, QStringLiteral("Second"));
}

void AccessTest::closesByKey()
{
    window_->openTool(scan_.plugins[0]);
    QTest::keyClick(window_.get(), Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!window_->openPlugin());
    QTest::keyClick(window_.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!window_->isVisible());
}

void AccessTest::tellsAboutItselfByKey()
{
    QTest::keyClick(window_.get(), Qt::Key_F1);
    auto *box = window_->findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QTest::keyClick(box, Qt::Key_Escape);
    QTRY_VERIFY(!window_->findChild<QMessageBox *>());
}

void AccessTest::namesItsParts()
{
    const auto name = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    auto *toolBar = window_->findChild<QToolBar *>();
    QCOMPARE(name(toolBar), QStringLiteral("Tools"));
    QCOMPARE(name(toolBar->widgetForAction(toolBar->actions().constFirst())),
             QStringLiteral("Second caption"));
    QCOMPARE(name(window_->centralWidget()), QStringLiteral("Work area"));
    QCOMPARE(name(window_->statusBar()), QStringLiteral("Status"));
    QCOMPARE(name(window_.get()), QStringLiteral("Tendro Host"));
}

void AccessTest::followsThePalette_data()
{
    addColumns<QColor, QColor>("ground", "text");
    addRow("dark", QColor(30, 31, 32), QColor(240, 240, 240));
    addRow("light", QColor(240, 241, 242), QColor(10, 10, 10));
}

void AccessTest::followsThePalette()
{
    QFETCH(QColor, ground);
    QFETCH(QColor, text);
    const QPalette before = QApplication::palette();
    QPalette palette(ground, ground);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    QApplication::setPalette(palette);
    const QImage picture = window_->centralWidget()->grab().toImage();
    QApplication::setPalette(before);
    QCOMPARE(picture.pixelColor(3, 3), ground);
    bool hasText = false;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            hasText = hasText || picture.pixelColor(x, y) == text;
    }
    QVERIFY(hasText);
}

PADSCOPE_TESTS(AccessTest);
#include "tst_access.moc"
