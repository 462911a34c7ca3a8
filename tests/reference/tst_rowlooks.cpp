#include "reference/reference.h"
#include "reference/shownwindow.h"
#include "rowdelegate.h"
#include "support/testmain.h"

#include <QHeaderView>
#include <QLabel>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTreeView>

/// Plain rows look as the style draws them, on every screen and after every change of looks.
class RowLooks : public QObject
{
    Q_OBJECT

private slots:
    void scaledScreens_data();
    void scaledScreens();
    void directionThatChanges();
    void paletteThatChanges();
    void updatesThatTheHostStops();
    void labelOfALongRowIsAsHighAsAnother();
    void moreTextsThanAreKept();
};

namespace {

void addRows(const ShownWindow &shown)
{
    shown.window->commandLine->setEnabled(false); // no cursor that blinks
    for (const char *row :
         {"___gjpqy___", "ABC   00 01 02 ", "a row that is wider than the view by far, and so is elided",
          "row\twith a tabulator", "", "|{}[]()"})
        shown.view->AddData(QLatin1String(row), QString());
}

void settle(const ShownWindow &shown)
{
    QVERIFY(shown.waitForFrame());
    // A layout that is due makes paintings that are due only then.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

/// What stands on the screen is what one painting of the whole window gives.
void verifyScreen(const ShownWindow &shown)
{
    settle(shown);
    const QString different = reference::difference(shown.onScreen(), shown.picture());
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

} // namespace

void RowLooks::scaledScreens_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QString>("size");
    for (const char *size : {"6", "8", "10", "12"}) {
        for (const qreal ratio : {1.0, 1.25, 1.5, 1.75, 2.0})
            QTest::addRow("%s points at %g", size, ratio) << ratio << size;
    }
}

void RowLooks::scaledScreens()
{
    QFETCH(qreal, ratio);
    QFETCH(QString, size);
    ShownWindow shown({{"Monitor Font Size", size}});
    shown.show(shown.view, {480, 360});
    addRows(shown);
    QVERIFY(shown.waitForFrame());
    const QImage drawnByTheTool = shown.picture(ratio);
    QVERIFY(!shown.delegate()->layouts.isEmpty());
    QStyledItemDelegate plain;
    shown.view->treeView->setItemDelegate(&plain);
    const QString different = reference::difference(drawnByTheTool, shown.picture(ratio));
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

void RowLooks::directionThatChanges()
{
    QImage expected;
    {
        ShownWindow shown;
        shown.window->setLayoutDirection(Qt::RightToLeft);
        shown.show(shown.view, {480, 360});
        addRows(shown);
        settle(shown);
        expected = shown.picture();
    }
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    addRows(shown);
    settle(shown);
    shown.window->setLayoutDirection(Qt::RightToLeft);
    settle(shown);
    const QString different = reference::difference(shown.onScreen(), expected);
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

void RowLooks::paletteThatChanges()
{
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    addRows(shown);
    verifyScreen(shown);
    QPalette palette = shown.view->treeView->palette();
    palette.setColor(QPalette::Text, Qt::red);
    shown.view->treeView->setPalette(palette);
    verifyScreen(shown);
}

void RowLooks::updatesThatTheHostStops()
{
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    addRows(shown);
    settle(shown);
    shown.window->setUpdatesEnabled(false);
    shown.view->pacer->sinceFrame.invalidate();
    shown.view->AddData("while the host stops updates", QString());
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    QVERIFY(!shown.view->treeView->viewport()->updatesEnabled());
    shown.window->setUpdatesEnabled(true);
    verifyScreen(shown);
}

void RowLooks::labelOfALongRowIsAsHighAsAnother()
{
    for (int size = 8; size <= 20; ++size) {
        ShownWindow shown;
        QFont font = shown.window->font();
        font.setPixelSize(size);
        shown.window->setFont(font);
        QLabel *label = shown.view->lastRowLabel;
        label->setText("short");
        const int height = label->sizeHint().height();
        label->setText(QString(10000, 'x'));
        QCOMPARE(label->sizeHint().height(), height);
    }
}

void RowLooks::moreTextsThanAreKept()
{
    ShownWindow shown;
    shown.window->commandLine->setEnabled(false);
    shown.show(shown.view, {480, 360});
    int most = 0;
    for (int row = 0; row < 400; ++row) {
        shown.view->AddData(QString::number(row), QString());
        if (row % 5 == 0)
            shown.picture();
        most = qMax(most, shown.delegate()->layouts.size());
    }
    QVERIFY2(most > 200 && most <= 256, qPrintable(QString::number(most)));
    verifyScreen(shown);
}

int main(int argc, char **argv)
{
    reference::useFixedFonts();
    return testsupport::run<RowLooks>(argc, argv);
}
#include "tst_rowlooks.moc"
