#include "qlineupdownedit.h"
#include "support/tests.h"

/// The command line and what it recalls.
class LineEditTests : public QObject
{
    Q_OBJECT

private slots:
    void steps_data();
    void steps();
    void historyIsKeptBeforeReturnIsHeard();
    void fiftyFirstLineDropsTheOldest();
};

namespace {

void enter(QLineUpDownEdit &edit, const QString &line)
{
    edit.setText(line);
    QTest::keyClick(&edit, Qt::Key_Return);
}

} // namespace

void LineEditTests::steps_data()
{
    // A step is "enter:line"; "type:text" in place of what is there; or "up:" and "down:" with what is shown
    // then, which is selected if it was recalled.
    addColumns<QString, QStringList>("steps", "history");
    addRow("both directions", "enter:1 enter:2 enter:2 enter:3 up:2 up:1 up:3 down:1 down:2 down:3",
           QStringList{"3", "2", "1"});
    addRow("no line is not recalled", "type:typed up:typed down:typed", QStringList{});
    addRow("one line is not recalled", "enter:1 type:typed up:typed down:typed", QStringList{"1"});
    addRow("two lines", "enter:1 enter:2 up:1 up:2 down:1 down:2", QStringList{"2", "1"});
    addRow("repeat of the newest is refused", "enter:1 enter:1", QStringList{"1"});
    addRow("older repeat is a new entry", "enter:1 enter:2 enter:1", QStringList{"1", "2", "1"});
    addRow("case makes a line differ", "enter:one enter:One", QStringList{"One", "one"});
    addRow("empty line is added like any other", "enter: enter: enter:1 enter:", QStringList{"", "1", ""});
    addRow("editing does not move the index", "enter:1 enter:2 enter:3 up:2 type:edited up:1",
           QStringList{"3", "2", "1"});
    addRow("refused repeat starts from the front again", "enter:1 enter:2 enter:3 up:2 up:1 enter:3 up:2",
           QStringList{"3", "2", "1"});
}

void LineEditTests::steps()
{
    QFETCH(QString, steps);
    QFETCH(QStringList, history);
    QLineUpDownEdit edit;
    for (const QString &step : steps.split(' ')) {
        const QString action = step.section(':', 0, 0);
        const QString text = step.section(':', 1);
        if (action == "enter") {
            enter(edit, text);
        } else if (action == "type") {
            edit.selectAll();
            QTest::keyClicks(&edit, text);
        } else {
            QTest::keyClick(&edit, action == "up" ? Qt::Key_Up : Qt::Key_Down);
            QCOMPARE(edit.text(), text);
            QCOMPARE(edit.selectedText(), edit.historyLines().size() >= 2 ? text : QString());
        }
    }
    QCOMPARE(edit.historyLines(), history);
}

void LineEditTests::historyIsKeptBeforeReturnIsHeard()
{
    QLineUpDownEdit edit;
    QVERIFY(!edit.parent());
    QList<QStringList> heard;
    connect(&edit, &QLineEdit::returnPressed, this, [&] { heard += QStringList(edit.historyLines()); });
    enter(edit, "one");
    edit.setText("two");
    QTest::keyClick(&edit, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(heard, QList<QStringList>({{"one"}, {"two", "one"}}));
}

void LineEditTests::fiftyFirstLineDropsTheOldest()
{
    QLineUpDownEdit edit;
    for (int i = 1; i <= 50; ++i)
        enter(edit, QString::number(i));
    QCOMPARE(edit.historyLines().size(), 50);
    QCOMPARE(edit.historyLines().last(), QString("1"));

    enter(edit, "51");
    QCOMPARE(edit.historyLines().size(), 50);
    QCOMPARE(edit.historyLines().first(), QString("51"));
    QCOMPARE(edit.historyLines().last(), QString("2"));
}

PADSCOPE_TESTS(LineEditTests);
#include "tst_lineedit.moc"
