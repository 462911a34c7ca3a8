#include <QHeaderView>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include "monitor/monitorview.h"
#include "support/tests.h"

/// Adding rows: how many stay, when the view follows, and what the window does not do.
class Rows : public QObject
{
    Q_OBJECT

private slots:
    void textOfARow_data();
    void textOfARow();
    void viewIsEmptiedPast151Rows();
    void everyFifthRowScrolls();
    void rowAfterTheCutDoesNotScroll();
    void firstFifteenRowsWiden();
    void rowsAfterTheCutWidenAgain();
    void rowsAreNotNested();
    void labelShowsTextAndNoMarkup();
    void longRowLeavesTheWindow_data();
    void longRowLeavesTheWindow();

private:
    static bool show(MonitorView &monitorView);
    static int columnWidth(const MonitorView &monitorView);
};

bool Rows::show(MonitorView &monitorView)
{
    monitorView.window.tabs->setCurrentWidget(monitorView.view);
    monitorView.window.show();
    return QTest::qWaitForWindowExposed(&monitorView.window);
}

int Rows::columnWidth(const MonitorView &monitorView)
{
    return monitorView.view->treeView->columnWidth(0);
}

void Rows::textOfARow_data()
{
    addColumns<QString, QString, QString>("first", "second", "row");
    addRow("both texts", "A", "B", "A   B");
    addRow("first only", "A", "", "A");
    addRow("second only", "", "B", "   B");
    addRow("neither", "", "", "");
    addRow("blanks are kept", "A  ", "  B ", "A       B ");
    addRow("second of blanks", "A", " ", "A    ");
}

void Rows::textOfARow()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(QString, row);
    MonitorView monitorView;
    monitorView.view->AddData(first, second);
    QCOMPARE(monitorView.rows(), QStringList{row});
    QCOMPARE(monitorView.label(), first);
}

void Rows::viewIsEmptiedPast151Rows()
{
    MonitorView monitorView;
    for (int i = 1; i <= 151; ++i)
        monitorView.view->AddData(QString::number(i), QString());
    QCOMPARE(monitorView.rows().size(), 151);
    QCOMPARE(monitorView.rows().constFirst(), QString("1"));
    QCOMPARE(monitorView.rows().constLast(), QString("151"));
    monitorView.view->AddData("152", QString());
    QCOMPARE(monitorView.rows(), QStringList{"152"});
    QCOMPARE(monitorView.label(), QString("152"));
    monitorView.view->AddData("153", QString());
    QCOMPARE(monitorView.rows(), (QStringList{"152", "153"}));
}

void Rows::everyFifthRowScrolls()
{
    MonitorView monitorView;
    QVERIFY(show(monitorView));
    QTreeView *tree = monitorView.view->treeView;
    // A view of about two rows, so that every scroll is seen.
    tree->setFixedHeight(tree->header()->height() + 2 * tree->fontMetrics().height() + 6);
    QCoreApplication::processEvents();

    QList<int> scrolledAt;
    for (int row = 0; row < 151; ++row) {
        const int before = tree->verticalScrollBar()->value();
        monitorView.view->AddData("row", QString());
        QCoreApplication::processEvents();
        if (tree->verticalScrollBar()->value() == before)
            continue;
        scrolledAt.append(row);
        const QRect newRow = tree->visualRect(monitorView.view->model->index(row, 0));
        QVERIFY(newRow.top() >= 0 && newRow.bottom() <= tree->viewport()->height());
    }
    QCOMPARE(scrolledAt, (QList<int>{5,  10, 15, 20, 25,  30,  35,  40,  45,  50,  55,  60,  65,  70,  75,
                                     80, 85, 90, 95, 100, 105, 110, 115, 120, 125, 130, 135, 140, 145, 150}));
}

void Rows::rowAfterTheCutDoesNotScroll()
{
    MonitorView monitorView;
    QVERIFY(show(monitorView));
    QTreeView *tree = monitorView.view->treeView;
    tree->setFixedHeight(tree->header()->height() + tree->fontMetrics().height() + 6);
    for (int row = 0; row < 152; ++row)
        monitorView.view->AddData("row", QString());
    QCoreApplication::processEvents();
    QCOMPARE(tree->verticalScrollBar()->value(), 0);
    // The rows 1 to 4 leave the view where it is, the row 5 moves it.
    for (int row = 1; row <= 4; ++row) {
        monitorView.view->AddData("row", QString());
        QCoreApplication::processEvents();
        QCOMPARE(tree->verticalScrollBar()->value(), 0);
    }
    monitorView.view->AddData("row", QString());
    QCoreApplication::processEvents();
    QVERIFY(tree->verticalScrollBar()->value() > 0);
}

void Rows::firstFifteenRowsWiden()
{
    MonitorView monitorView;
    QVERIFY(show(monitorView));
    const int narrow = columnWidth(monitorView);
    for (int row = 0; row < 14; ++row)
        monitorView.view->AddData("row", QString());
    QVERIFY(columnWidth(monitorView) <= narrow);
    monitorView.view->AddData(QString(300, 'W'), QString());
    const int wide = columnWidth(monitorView);
    QVERIFY(wide > narrow);
    QVERIFY(wide >= monitorView.view->treeView->fontMetrics().horizontalAdvance(QString(300, 'W')));

    for (int row = 15; row < 150; ++row) {
        monitorView.view->AddData(QString(600, 'W'), QString());
        QCOMPARE(columnWidth(monitorView), wide);
    }
}

void Rows::rowsAfterTheCutWidenAgain()
{
    MonitorView monitorView;
    QVERIFY(show(monitorView));
    for (int row = 0; row < 151; ++row)
        monitorView.view->AddData("row", QString());
    const int narrow = columnWidth(monitorView);
    monitorView.view->AddData(QString(300, 'W'), QString());
    QCOMPARE(monitorView.rows().size(), 1);
    QCOMPARE(columnWidth(monitorView), narrow);
    monitorView.view->AddData("row", QString());
    QVERIFY(columnWidth(monitorView) > narrow);
}

void Rows::rowsAreNotNested()
{
    MonitorView monitorView;
    monitorView.view->AddData("A", "B");
    monitorView.view->AddData("C", QString());
    QCOMPARE(monitorView.view->model->rowCount(), 2);
    QCOMPARE(monitorView.view->model->columnCount(), 1);
    QCOMPARE(monitorView.view->model->rowCount(monitorView.view->model->index(0, 0)), 0);
}

void Rows::labelShowsTextAndNoMarkup()
{
    MonitorView monitorView;
    QLabel *label = monitorView.view->lastRowLabel;
    monitorView.view->AddData("<b>x</b>", QString());
    QCOMPARE(label->text(), QString("<b>x</b>"));
    QCOMPARE(label->textFormat(), Qt::PlainText);
    // As markup it would be one letter wide.
    QVERIFY(label->sizeHint().width() >= label->fontMetrics().horizontalAdvance("<b>x</b>"));
    QCOMPARE(monitorView.rows(), QStringList{"<b>x</b>"});
}

void Rows::longRowLeavesTheWindow_data()
{
    QTest::addColumn<QString>("text");
    addRow("a letter", "x");
    addRow("one long word", QString(20000, 'W'));
    addRow("many words", QString("word ").repeated(4000));
}

void Rows::longRowLeavesTheWindow()
{
    QFETCH(QString, text);
    MonitorView monitorView;
    QVERIFY(show(monitorView));
    const QSize size = monitorView.window.size();
    const int hint = monitorView.window.sizeHint().width();
    const int minimumHint = monitorView.window.minimumSizeHint().width();
    const int viewHint = monitorView.view->sizeHint().width();
    const int viewMinimumHint = monitorView.view->minimumSizeHint().width();
    for (int row = 0; row < 20; ++row)
        monitorView.view->AddData(text, text);
    QCoreApplication::processEvents();
    QCOMPARE(monitorView.window.size(), size);
    QCOMPARE(monitorView.window.sizeHint().width(), hint);
    QCOMPARE(monitorView.window.minimumSizeHint().width(), minimumHint);
    QCOMPARE(monitorView.view->sizeHint().width(), viewHint);
    QCOMPARE(monitorView.view->minimumSizeHint().width(), viewMinimumHint);
}

PADSCOPE_TESTS(Rows);
#include "tst_rows.moc"
