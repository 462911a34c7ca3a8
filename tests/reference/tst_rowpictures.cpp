#include <functional>
#include <map>
#include <QHeaderView>
#include <QScrollBar>
#include <QStyleFactory>

#include "reference/reference.h"
#include "reference/shownwindow.h"
#include "support/tests.h"

namespace {

/// Texts that a row can hold, beside those that the reports give.
void addUnusualRows(ShownWindow &shown)
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
        shown.add(text);
    shown.view->AddData(QStringLiteral("first"), QStringLiteral("second"));
}

void activateAnotherWindow(ShownWindow &)
{
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
}

void changePalette(ShownWindow &shown)
{
    QPalette palette = shown.window->palette();
    palette.setColor(QPalette::Highlight, Qt::darkGreen);
    palette.setColor(QPalette::HighlightedText, Qt::yellow);
    palette.setColor(QPalette::Window, Qt::darkGray);
    shown.window->setPalette(palette);
}

void addRowsUpToTheCut(ShownWindow &shown)
{
    for (int i = shown.model->rowCount(); i < 152; ++i)
        shown.add(QString::number(i));
}

using Change = std::function<void(ShownWindow &)>;

Change chooseFont(const std::function<void(QFont &)> &change)
{
    return [change](ShownWindow &shown) {
        QFont font = Inspect::font(*shown.view);
        change(font);
        shown.view->OnChangedFont(font);
    };
}

void decorate(QFont &font)
{
    font.setBold(true);
    font.setItalic(true);
    font.setUnderline(true);
    font.setStrikeOut(true);
}

void space(QFont &font)
{
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1.3);
    font.setCapitalization(QFont::AllUppercase);
}

/// What is done to the window, as the data file names it.
const std::map<QString, Change> changes{
    {"scroll to the top", [](auto &shown) { shown.rows()->verticalScrollBar()->setValue(0); }},
    {"scroll sideways", [](auto &shown) { shown.rows()->horizontalScrollBar()->setValue(133); }},
    {"choose a serif font", chooseFont([](QFont &font) { font.setFamily("DejaVu Serif"); })},
    {"choose 12 points", [](auto &shown) { shown.view->OnChangedFontSize("12"); }},
    {"choose a decorated font", chooseFont(decorate)},
    {"choose a spaced font", chooseFont(space)},
    {"select", [](auto &shown) { shown.rows()->setCurrentIndex(shown.model->index(29, 0)); }},
    {"clear the selection", [](auto &shown) { shown.rows()->selectionModel()->clearSelection(); }},
    {"focus", [](auto &shown) { shown.rows()->setFocus(); }},
    {"disable", [](auto &shown) { shown.view->setEnabled(false); }},
    {"activate another window", activateAnotherWindow},
    {"hover",
     [](auto &shown) {
         QTest::mouseMove(shown.rows()->viewport(), {60, 60});
     }},
    {"narrow the column", [](auto &shown) { shown.rows()->header()->resizeSection(0, 171); }},
    {"remove all rows", [](auto &shown) { shown.model->removeRows(0, shown.model->rowCount()); }},
    {"add rows up to the cut", addRowsUpToTheCut},
    {"mirror", [](auto &shown) { shown.window->setLayoutDirection(Qt::RightToLeft); }},
    {"change the palette", changePalette},
    {"change the style", [](auto &) { QApplication::setStyle(QStyleFactory::create("windows")); }},
    {"style the window",
     [](auto &shown) {
         shown.window->setStyleSheet("QTreeView::item {border: 1px solid red; padding: 2px;} "
                                     "QTreeView::item:selected {background: blue;} QLabel {color: green;}");
     }},
    {"style the application's items",
     [](auto &) {
         qApp->setStyleSheet("QTreeView::item {color: orange;} QTreeView::item:hover {color: cyan;}");
     }},
};

void apply(const QString &names, ShownWindow &shown)
{
    for (const QString &name : names.split(", ", Qt::SkipEmptyParts))
        changes.at(name)(shown);
}

ShownWindow::Settings storedFont(const QString &familyAndSize)
{
    if (familyAndSize.isEmpty())
        return {};
    return {{"Monitor Font", familyAndSize.section(", ", 0, 0)},
            {"Monitor Font Size", familyAndSize.section(", ", 1)}};
}

} // namespace

/// The "Monitor" tab, controls included, looks as it always has.
class RowPictureTests : public QObject
{
    Q_OBJECT

private slots:
    void pictures_data() { reference::addScenes("rowscenes.txt", 6); }
    void pictures();
    void cleanup();
};

void RowPictureTests::pictures()
{
    QFETCH(QStringList, scene);
    ShownWindow shown(storedFont(scene[3]));
    apply(scene[4], shown);
    shown.show(shown.view, reference::sizeOf(scene[1]));
    // One of each kind, without text.
    for (const reference::Report &report : reference::reports().mid(0, 24))
        ShownWindow::send(shown.view, report.bytes);
    addUnusualRows(shown);
    apply(scene[5], shown);
    shown.settle(1);
    reference::verifyNone(reference::difference("rows/" + scene[0], shown.picture(scene[2].toDouble())));
    reference::verifyNone(reference::difference(shown.onScreen(), shown.picture()));
}

void RowPictureTests::cleanup()
{
    qApp->setStyleSheet(QString());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
}

PADSCOPE_TESTS(RowPictureTests);
#include "tst_rowpictures.moc"
