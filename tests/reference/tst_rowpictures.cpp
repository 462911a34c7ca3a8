#include "reference/reference.h"
#include "reference/reports.h"
#include "reference/shownwindow.h"
#include "rowdelegate.h"
#include "support/tests.h"

#include <functional>

#include <QHeaderView>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStyleFactory>
#include <QTreeView>

namespace {

using Settings = ShownWindow::Settings;
using Change = std::function<void(ShownWindow &)>;

struct Scene
{
    Settings settings = {};
    QSize size{480, 360};
    qreal pixelRatio = 1;
    Change beforeShow = nullptr;
    Change afterShow = nullptr;
};

Settings font(const QString &family, const QString &size)
{
    return {{QStringLiteral("Monitor Font"), family}, {QStringLiteral("Monitor Font Size"), size}};
}

/// Texts that a row can hold, beside those that the reports give.
void addUnusualRows(monitor *view)
{
    const QString latin = QString::fromLatin1("Pr\xfc"
                                              "fung \xa0|\xad|\xff");
    for (const QString &text :
         {QString(), QStringLiteral(" "), QStringLiteral("one\ttab"), QStringLiteral("two\nlines"), latin,
          QStringLiteral("office fluff AVATAR -> != &amp; <b>bold</b>"), QString(400, QLatin1Char('W')),
          QStringLiteral("word ").repeated(80),
          QString(QChar(0x5d0)) + QChar(0x5d1) + QStringLiteral(" 12 abc"),
          QString(QChar(0x2028)) + QStringLiteral("x"), QStringLiteral("a\u0301e\u0308"),
          QStringLiteral("trailing blanks    "), QStringLiteral("nul ") + QChar(0) + QStringLiteral(" nul")})
        view->AddData(text, QString());
    view->AddData(QStringLiteral("first"), QStringLiteral("second"));
}

void addRows(ShownWindow &shown)
{
    for (const QByteArray &report : reportsOfEveryKind(0))
        shown.send(shown.view, report);
    addUnusualRows(shown.view);
}

void select(ShownWindow &shown, int row)
{
    QTreeView *rows = shown.view->treeView;
    rows->setCurrentIndex(shown.view->model->index(row, 0));
}

void scrollToTop(ShownWindow &shown)
{
    shown.view->treeView->verticalScrollBar()->setValue(0);
}

void setStyle(ShownWindow &, const char *name)
{
    QApplication::setStyle(QStyleFactory::create(QLatin1String(name)));
}

Change changeFont(const std::function<void(QFont &)> &change)
{
    return [change](ShownWindow &shown) {
        QFont font = shown.view->monitorFont;
        change(font);
        shown.view->OnChangedFont(font);
    };
}

} // namespace

Q_DECLARE_METATYPE(Scene)

/// The "Monitor" tab, controls included, looks as it always has.
class RowPictureTests : public QObject
{
    Q_OBJECT

private slots:
    void pictures_data();
    void pictures();
    void plainRowsTakeTheShortWay();
    void cleanup();

private:
    static void addFontScenes();
    static void addStateScenes();
    static void addSurroundings();
};

void RowPictureTests::pictures_data()
{
    QTest::addColumn<Scene>("scene");
    QTest::newRow("rows/plain") << Scene{};
    QTest::newRow("rows/top") << Scene{{}, {480, 360}, 1, nullptr, scrollToTop};
    QTest::newRow("rows/wide") << Scene{{}, {1100, 700}};
    QTest::newRow("rows/small") << Scene{{}, {320, 280}};
    QTest::newRow("rows/ratio-1.5") << Scene{{}, {480, 360}, 1.5};
    QTest::newRow("rows/ratio-2") << Scene{{}, {480, 360}, 2};
    QTest::newRow("rows/sideways") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                                shown.view->treeView->horizontalScrollBar()->setValue(133);
                                            }};
    addFontScenes();
    addStateScenes();
    addSurroundings();
}

void RowPictureTests::addFontScenes()
{
    const QString mono = QStringLiteral("DejaVu Sans Mono");
    QTest::newRow("rows/font-6") << Scene{font(mono, QStringLiteral("6"))};
    QTest::newRow("rows/font-12") << Scene{font(mono, QStringLiteral("12"))};
    QTest::newRow("rows/font-15") << Scene{font(mono, QStringLiteral("15"))};
    QTest::newRow("rows/font-mono-10") << Scene{font(mono, QStringLiteral("10"))};
    QTest::newRow("rows/font-sans") << Scene{font(QStringLiteral("DejaVu Sans"), QStringLiteral("12"))};
    QTest::newRow("rows/font-serif") << Scene{{}, {480, 360}, 1, nullptr, changeFont([](QFont &font) {
                                                  font.setFamily(QStringLiteral("DejaVu Serif"));
                                              })};
    QTest::newRow("rows/font-size-changed") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                                         shown.view->OnChangedFontSize(QStringLiteral("12"));
                                                     }};
    QTest::newRow("rows/font-decorated") << Scene{{}, {480, 360}, 1, nullptr, changeFont([](QFont &font) {
                                                      font.setBold(true);
                                                      font.setItalic(true);
                                                      font.setUnderline(true);
                                                      font.setStrikeOut(true);
                                                  })};
    QTest::newRow("rows/font-spaced") << Scene{{}, {480, 360}, 1.5, nullptr, changeFont([](QFont &font) {
                                                   font.setLetterSpacing(QFont::AbsoluteSpacing, 1.3);
                                                   font.setCapitalization(QFont::AllUppercase);
                                               })};
}

void RowPictureTests::addStateScenes()
{
    const auto selected = [](ShownWindow &shown) {
        select(shown, 29);
        shown.view->treeView->setFocus();
    };
    QTest::newRow("rows/selected-focus") << Scene{{}, {480, 360}, 1, nullptr, selected};
    QTest::newRow("rows/selected-focus-1.5") << Scene{{}, {480, 360}, 1.5, nullptr, selected};
    QTest::newRow("rows/selected") << Scene{
        {}, {480, 360}, 1, nullptr, [](ShownWindow &shown) { select(shown, 29); }};
    QTest::newRow("rows/current-unselected")
        << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                     select(shown, 29);
                     shown.view->treeView->selectionModel()->clearSelection();
                     shown.view->treeView->setFocus();
                 }};
    QTest::newRow("rows/disabled") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                                select(shown, 29);
                                                shown.view->setEnabled(false);
                                            }};
    QTest::newRow("rows/inactive") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                                select(shown, 29);
                                                QWidget other;
                                                other.show();
                                                other.activateWindow();
                                                QVERIFY(QTest::qWaitForWindowActive(&other));
                                            }};
    QTest::newRow("rows/hover") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                             QTest::mouseMove(shown.view->treeView->viewport(), {60, 60});
                                             QCoreApplication::processEvents();
                                         }};
    QTest::newRow("rows/narrow-column") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                                     shown.view->treeView->header()->resizeSection(0, 171);
                                                 }};
    QTest::newRow("rows/empty") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                             shown.view->model->removeRows(0, shown.view->model->rowCount());
                                         }};
    QTest::newRow("rows/cut-back") << Scene{{}, {480, 360}, 1, nullptr, [](ShownWindow &shown) {
                                                for (int i = shown.view->model->rowCount(); i < 152; ++i)
                                                    shown.view->AddData(QString::number(i), QString());
                                            }};
}

void RowPictureTests::addSurroundings()
{
    const auto mirrored = [](ShownWindow &shown) { shown.window->setLayoutDirection(Qt::RightToLeft); };
    QTest::newRow("rows/right-to-left") << Scene{{}, {480, 360}, 1, mirrored, nullptr};
    QTest::newRow("rows/right-to-left-narrow")
        << Scene{{}, {480, 360}, 1.5, mirrored, [](ShownWindow &shown) {
                     shown.view->treeView->header()->resizeSection(0, 171);
                     select(shown, 29);
                     shown.view->treeView->setFocus();
                 }};
    QTest::newRow("rows/palette") << Scene{{},
                                           {480, 360},
                                           1,
                                           [](ShownWindow &shown) {
                                               QPalette palette = shown.window->palette();
                                               palette.setColor(QPalette::Highlight, Qt::darkGreen);
                                               palette.setColor(QPalette::HighlightedText, Qt::yellow);
                                               palette.setColor(QPalette::Window, Qt::darkGray);
                                               shown.window->setPalette(palette);
                                           },
                                           [](ShownWindow &shown) { select(shown, 29); }};
    QTest::newRow("rows/style-windows") << Scene{{},
                                                 {480, 360},
                                                 1,
                                                 [](ShownWindow &shown) { setStyle(shown, "windows"); },
                                                 [](ShownWindow &shown) { select(shown, 29); }};
    QTest::newRow("rows/host-style-sheet")
        << Scene{{},
                 {480, 360},
                 1,
                 [](ShownWindow &shown) {
                     shown.window->setStyleSheet(QStringLiteral(
                         "QTreeView::item {border: 1px solid red; padding: 2px;} "
                         "QTreeView::item:selected {background: blue;} QLabel {color: green;}"));
                 },
                 [](ShownWindow &shown) { select(shown, 29); }};
    QTest::newRow("rows/host-item-rules")
        << Scene{{},
                 {480, 360},
                 1,
                 [](ShownWindow &) {
                     qApp->setStyleSheet(QStringLiteral("QTreeView::item {color: orange;} "
                                                        "QTreeView::item:hover {color: cyan;}"));
                 },
                 [](ShownWindow &shown) { select(shown, 29); }};
}

void RowPictureTests::pictures()
{
    QFETCH(Scene, scene);
    ShownWindow shown(scene.settings);
    shown.window->commandLine->setEnabled(false); // no cursor that blinks
    if (scene.beforeShow)
        scene.beforeShow(shown);
    shown.show(shown.view, scene.size);
    addRows(shown);
    if (scene.afterShow)
        scene.afterShow(shown);
    QVERIFY(shown.waitForFrame());
    QCoreApplication::processEvents();
    const QString difference =
        reference::difference(QLatin1String(QTest::currentDataTag()), shown.picture(scene.pixelRatio));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    const QString onScreen = reference::difference(shown.onScreen(), shown.picture());
    QVERIFY2(onScreen.isEmpty(), qPrintable(onScreen));
}

/// Otherwise the pictures would say nothing about it.
void RowPictureTests::plainRowsTakeTheShortWay()
{
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    shown.view->AddData(QStringLiteral("plain"), QString());
    shown.picture();
    QVERIFY(shown.delegate()->layouts.contains(QStringLiteral("plain")));
}

void RowPictureTests::cleanup()
{
    qApp->setStyleSheet(QString());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
}

PADSCOPE_TESTS(RowPictureTests);
#include "tst_rowpictures.moc"
