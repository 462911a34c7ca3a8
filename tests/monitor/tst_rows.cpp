#include <QHeaderView>
#include <QScrollBar>

#include "monitor/monitortest.h"

/// Adding rows: how many stay, when the view follows, and what the tab does not do.
class Rows : public MonitorTest
{
    Q_OBJECT

private slots:
    void textOfARow();
    void viewIsEmptiedPast151Rows();
    void everyFifthRowScrolls();
    void firstFifteenRowsWiden();
    void rowsAfterTheCutWidenAgain();
    void labelShowsTextAndNoMarkup();
    void longRowLeavesTheTab_data();
    void longRowLeavesTheTab();
};

void Rows::textOfARow()
{
    view->AddData("A", "B");
    view->AddData("A", "");
    view->AddData("", "B");
    view->AddData("", "");
    view->AddData("A", " ");
    QCOMPARE(lastRow->text(), QString("A"));
    // Blanks are kept.
    view->AddData("A  ", "  B ");
    QCOMPARE(lastRow->text(), QString("A  "));
    QCOMPARE(rows(), (QStringList{"A   B", "A", "   B", "", "A    ", "A       B "}));
    QCOMPARE(model->columnCount(), 1);
    QVERIFY(!model->item(0)->hasChildren());
}

void Rows::viewIsEmptiedPast151Rows()
{
    for (int i = 1; i <= 151; ++i)
        add(QString::number(i));
    QCOMPARE(rows().size(), 151);
    QCOMPARE(rows().constFirst(), QString("1"));
    QCOMPARE(rows().constLast(), QString("151"));
    add("152");
    QCOMPARE(rows(), QStringList{"152"});
    QCOMPARE(lastRow->text(), QString("152"));
    add("153");
    QCOMPARE(rows(), (QStringList{"152", "153"}));
}

void Rows::everyFifthRowScrolls()
{
    QVERIFY(show());
    // A view of about two rows, so that every scroll is seen.
    tree->setFixedHeight(tree->header()->height() + 2 * tree->fontMetrics().height() + 6);
    QCoreApplication::processEvents();

    QList<int> scrolledAt;
    for (int added = 0; added < 158; ++added) {
        const int row = model->rowCount();
        const int before = tree->verticalScrollBar()->value();
        add("row");
        QCoreApplication::processEvents();
        if (tree->verticalScrollBar()->value() == before)
            continue;
        scrolledAt.append(row);
        const QRect newest = tree->visualRect(model->index(model->rowCount() - 1, 0));
        QVERIFY(newest.top() >= 0 && newest.bottom() <= tree->viewport()->height());
    }
    // The row 151 is the one that empties the view, the 5 at the end comes after it.
    QCOMPARE(scrolledAt,
             (QList<int>{5,  10, 15, 20,  25,  30,  35,  40,  45,  50,  55,  60,  65,  70,  75,  80,
                         85, 90, 95, 100, 105, 110, 115, 120, 125, 130, 135, 140, 145, 150, 151, 5}));
}

void Rows::firstFifteenRowsWiden()
{
    QVERIFY(show());
    const int narrow = tree->columnWidth(0);
    for (int row = 0; row < 14; ++row)
        add("row");
    QVERIFY(tree->columnWidth(0) <= narrow);
    add(QString(300, 'W'));
    const int wide = tree->columnWidth(0);
    QVERIFY(wide > narrow);
    QVERIFY(wide >= tree->fontMetrics().horizontalAdvance(QString(300, 'W')));

    for (int row = 15; row < 150; ++row) {
        add(QString(600, 'W'));
        QCOMPARE(tree->columnWidth(0), wide);
    }
}

void Rows::rowsAfterTheCutWidenAgain()
{
    QVERIFY(show());
    for (int row = 0; row < 151; ++row)
        add("row");
    const int narrow = tree->columnWidth(0);
    add(QString(300, 'W'));
    QCOMPARE(rows().size(), 1);
    QCOMPARE(tree->columnWidth(0), narrow);
    add("row");
    QVERIFY(tree->columnWidth(0) > narrow);
}

void Rows::labelShowsTextAndNoMarkup()
{
    add("<b>x</b>");
    QCOMPARE(lastRow->text(), QString("<b>x</b>"));
    QCOMPARE(lastRow->textFormat(), Qt::PlainText);
    // As markup it would be one letter wide.
    QVERIFY(lastRow->sizeHint().width() >= lastRow->fontMetrics().horizontalAdvance("<b>x</b>"));
    QCOMPARE(rows(), QStringList{"<b>x</b>"});
}

void Rows::longRowLeavesTheTab_data()
{
    QTest::addColumn<QString>("text");
    addRow("a letter", "x");
    addRow("one long word", QString(20000, 'W'));
    addRow("many words", QString("word ").repeated(4000));
}

void Rows::longRowLeavesTheTab()
{
    QFETCH(QString, text);
    QVERIFY(show());
    const QSize size = view->size();
    const int hint = view->sizeHint().width();
    const int minimumHint = view->minimumSizeHint().width();
    for (int row = 0; row < 20; ++row)
        view->AddData(text, text);
    QCoreApplication::processEvents();
    QCOMPARE(view->size(), size);
    QCOMPARE(view->sizeHint().width(), hint);
    QCOMPARE(view->minimumSizeHint().width(), minimumHint);
}

PADSCOPE_TESTS(Rows);
#include "tst_rows.moc"
