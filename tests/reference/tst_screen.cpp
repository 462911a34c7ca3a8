#include "reference/reference.h"
#include "reference/reports.h"
#include "reference/shownwindow.h"
#include "support/tests.h"

#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>

/// What partial paintings leave on the screen is what one painting of the whole window gives.
class ScreenTests : public QObject
{
    Q_OBJECT

private slots:
    void everyRow_data();
    void everyRow();
    void selectionAndScrollingWhileRowsCome_data();
    void selectionAndScrollingWhileRowsCome();
};

namespace {

/// How rows come: each after a rest, and so painted at once, or many in a frame.
enum Pace
{
    Rested,
    Hurried
};

void addRow(ShownWindow &shown, int number, Pace pace)
{
    if (pace == Rested)
        shown.view->pacer->sinceFrame.invalidate();
    // Every eleventh row is one that is not painted in a single run.
    const QString text = number % 11 == 10 ? QStringLiteral("row\t%1").arg(number)
                                           : QStringLiteral("row %1 ").arg(number).repeated(1 + number % 13);
    shown.view->AddData(number % 17 == 16 ? QString() : text, QString());
}

QString screenDifference(const ShownWindow &shown)
{
    if (!shown.waitForFrame())
        return QStringLiteral("the frame does not end");
    // A layout that is due makes paintings that are due only then.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    return reference::difference(shown.onScreen(), shown.picture(shown.window->devicePixelRatioF()));
}

} // namespace

void ScreenTests::everyRow_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("atOnce");
    QTest::addColumn<int>("pace");
    QTest::newRow("one at a time") << QSize(480, 360) << 1 << int(Rested);
    QTest::newRow("three at a time") << QSize(480, 360) << 3 << int(Rested);
    QTest::newRow("seven at a time, narrow") << QSize(320, 300) << 7 << int(Rested);
    QTest::newRow("all rows fit") << QSize(480, 3200) << 4 << int(Rested);
    QTest::newRow("eight in a frame") << QSize(480, 360) << 8 << int(Hurried);
    QTest::newRow("eleven in a frame, all rows fit") << QSize(480, 3200) << 11 << int(Hurried);
}

void ScreenTests::everyRow()
{
    QFETCH(QSize, size);
    QFETCH(int, atOnce);
    QFETCH(int, pace);
    ShownWindow shown;
    shown.window->commandLine->setEnabled(false); // no cursor that blinks
    shown.show(shown.view, size);
    for (int row = 0; row < 170;) {
        for (int i = 0; i < atOnce; ++i)
            addRow(shown, row++, Pace(pace));
        const QString difference = screenDifference(shown);
        QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("row %1: ").arg(row) + difference));
    }
}

void ScreenTests::selectionAndScrollingWhileRowsCome_data()
{
    QTest::addColumn<int>("pace");
    QTest::newRow("each after a rest") << int(Rested);
    QTest::newRow("in a frame") << int(Hurried);
}

void ScreenTests::selectionAndScrollingWhileRowsCome()
{
    QFETCH(int, pace);
    ShownWindow shown;
    shown.window->commandLine->setEnabled(false);
    shown.show(shown.view, {480, 360});
    QTreeView *rows = shown.view->treeView;
    for (int row = 0; row < 170; ++row) {
        addRow(shown, row, Pace(pace));
        switch (row % 8) {
        case 1:
            rows->setCurrentIndex(shown.view->model->index(qMax(0, shown.view->model->rowCount() - 3), 0));
            break;
        case 2:
            rows->setFocus();
            break;
        case 3:
            rows->verticalScrollBar()->setValue(row % 20);
            break;
        case 4:
            rows->horizontalScrollBar()->setValue(row % 50);
            break;
        case 5:
            QTest::mouseMove(rows->viewport(), {40, row % 100});
            break;
        case 6:
            QTest::keyClick(rows, row % 16 < 8 ? Qt::Key_Down : Qt::Key_PageUp);
            break;
        case 7:
            shown.window->resize(480 + row % 5, 360 + row % 7);
            break;
        default:
            break;
        }
        const QString difference = screenDifference(shown);
        QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("row %1: ").arg(row) + difference));
    }
}

PADSCOPE_TESTS(ScreenTests);
#include "tst_screen.moc"
