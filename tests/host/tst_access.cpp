#include <QAccessible>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

#include "host/examplehost.h"
#include "support/accesstree.h"
#include "support/tests.h"

/// The host by keyboard, by screen reader and in the user's colours.
class AccessTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { host_.reset(); }
    void givesMenusLettersOfTheirOwn();
    void hasEveryToolInAMenu();
    void opensToolsByNumber();
    void closesByKey();
    void showsAboutByKey();
    void namesItsParts();
    void leavesNothingNameless();
    void tellsMessages();
    void followsThePalette_data();
    void followsThePalette();

private:
    HostWindow &window() const { return *host_->window; }

    std::unique_ptr<ExampleHost> host_;
};

void AccessTest::init()
{
    host_ = std::make_unique<ExampleHost>();
    window().show();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
}

void AccessTest::givesMenusLettersOfTheirOwn()
{
    for (const char *name : {"Board", "boa & Co", "Fab"})
        window().addMenu(name);
    QCOMPARE(captions(window().menuBar()->actions()),
             QStringList({"&File", "&Basic", "&Advanced", "B&oard", "boa && &Co", "Fab", "&Help"}));
}

void AccessTest::hasEveryToolInAMenu()
{
    const QList<QAction *> tools = window().findChild<QToolBar *>()->actions();
    QCOMPARE(tools.size(), 3);
    for (QAction *tool : tools) {
        const QList<QWidget *> places = tool->associatedWidgets();
        QVERIFY(std::any_of(places.begin(), places.end(),
                            [](QWidget *place) { return qobject_cast<QMenu *>(place); }));
    }
}

void AccessTest::opensToolsByNumber()
{
    QTest::keyClick(&window(), Qt::Key_3, Qt::ControlModifier);
    QCOMPARE(window().openPlugin(), &host_->tenth());
    QTest::keyClick(&window(), Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(window().openPlugin(), &host_->second());
}

void AccessTest::closesByKey()
{
    window().openTool(host_->second());
    QTest::keyClick(&window(), Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!window().openPlugin());
    QTest::keyClick(&window(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!window().isVisible());
}

void AccessTest::showsAboutByKey()
{
    QTest::keyClick(&window(), Qt::Key_F1);
    auto *box = window().findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QTest::keyClick(box, Qt::Key_Escape);
    QTRY_VERIFY(!window().findChild<QMessageBox *>());
}

void AccessTest::namesItsParts()
{
    auto *toolBar = window().findChild<QToolBar *>();
    QStringList names;
    for (QWidget *part : {static_cast<QWidget *>(&window()), static_cast<QWidget *>(toolBar),
                          toolBar->widgetForAction(toolBar->actions().first()), window().centralWidget(),
                          static_cast<QWidget *>(window().statusBar())})
        names += QAccessible::queryAccessibleInterface(part)->text(QAccessible::Name);
    QCOMPARE(names, QStringList({"Tendro Host", "Tools", "Second caption", "Work area", "Status"}));
}

void AccessTest::leavesNothingNameless()
{
    QCOMPARE(namelessIn(accessOf(&window())), QStringList());
    QStringList menus;
    const QList<QAction *> openers = window().menuBar()->actions();
    for (const QAction *opener : openers)
        menus += described(*accessOf(opener->menu()));
    QCOMPARE(menus,
             QStringList({"PopupMenu: File", "PopupMenu: Basic", "PopupMenu: Advanced", "PopupMenu: Help"}));
    QCOMPARE(described(*accessOf(window().menuBar())), QString("MenuBar: Menus"));
    QCOMPARE(described(*accessOf(window().findChild<QWidget *>("qt_toolbar_ext_button"))),
             QString("CheckBox: More tools"));
}

void AccessTest::tellsMessages()
{
    window().statusBar()->showMessage("told");
    QCOMPARE(described(*accessOf(window().statusBar())), QString("StatusBar: Status: : told"));
    window().statusBar()->clearMessage();
    QCOMPARE(described(*accessOf(window().statusBar())), QString("StatusBar: Status"));
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
    const QImage picture = window().centralWidget()->grab().toImage();
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
