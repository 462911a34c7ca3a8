#include <QSignalSpy>

#include "qlineupdownedit.h"
#include "support/tests.h"

/// The command line and what it recalls.
class LineEditTests : public QObject
{
    Q_OBJECT

private slots:
    void startsEmpty();
    void recallsInBothDirections();
    void keypadEnterIsReturn();
    void oneLineIsNotRecalled_data();
    void oneLineIsNotRecalled();
    void repeatOfTheNewestIsRefused();
    void olderRepeatIsANewEntry();
    void caseMakesALineDiffer();
    void emptyLineIsAddedLikeAnyOther();
    void fiftyFirstLineDropsTheOldest();
    void historyIsKeptBeforeReturnIsHeard();
    void recalledLineIsSelected();
    void editingDoesNotMoveTheIndex();
    void refusedRepeatStartsFromTheFrontAgain();
    void otherKeysAreTypedAsUsual();
};

namespace {

void enter(QLineUpDownEdit &edit, const QString &line)
{
    edit.setText(line);
    QTest::keyClick(&edit, Qt::Key_Return);
}

QString press(QLineUpDownEdit &edit, Qt::Key key)
{
    QTest::keyClick(&edit, key);
    return edit.text();
}

} // namespace

void LineEditTests::startsEmpty()
{
    const QLineUpDownEdit edit;
    QVERIFY(edit.history.isEmpty());
    QCOMPARE(edit.historyIndex, 0);
    QVERIFY(!edit.parent());
}

void LineEditTests::recallsInBothDirections()
{
    QLineUpDownEdit edit;
    for (const char *line : {"one", "two", "two", "three"})
        enter(edit, line);

    QCOMPARE(edit.history, QList<QString>({"three", "two", "one"}));
    QCOMPARE(press(edit, Qt::Key_Up), QStringLiteral("two"));
    QCOMPARE(press(edit, Qt::Key_Up), QStringLiteral("one"));
    QCOMPARE(press(edit, Qt::Key_Up), QStringLiteral("three"));
    QCOMPARE(press(edit, Qt::Key_Down), QStringLiteral("one"));
    QCOMPARE(press(edit, Qt::Key_Down), QStringLiteral("two"));
    QCOMPARE(press(edit, Qt::Key_Down), QStringLiteral("three"));
}

void LineEditTests::keypadEnterIsReturn()
{
    QLineUpDownEdit edit;
    QSignalSpy returned(&edit, &QLineEdit::returnPressed);
    edit.setText("x");
    QTest::keyClick(&edit, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(edit.history, QList<QString>({"x"}));
    QCOMPARE(returned.count(), 1);
}

void LineEditTests::oneLineIsNotRecalled_data()
{
    QTest::addColumn<int>("key");
    addRow("up", int(Qt::Key_Up));
    addRow("down", int(Qt::Key_Down));
}

void LineEditTests::oneLineIsNotRecalled()
{
    QFETCH(int, key);
    QLineUpDownEdit edit;
    edit.setText("typed");
    QCOMPARE(press(edit, Qt::Key(key)), QStringLiteral("typed"));
    enter(edit, "one");
    edit.setText("typed");
    QCOMPARE(press(edit, Qt::Key(key)), QStringLiteral("typed"));
    QVERIFY(!edit.hasSelectedText());
    QCOMPARE(edit.historyIndex, 0);
}

void LineEditTests::repeatOfTheNewestIsRefused()
{
    QLineUpDownEdit edit;
    enter(edit, "one");
    enter(edit, "one");
    QCOMPARE(edit.history, QList<QString>({"one"}));
}

void LineEditTests::olderRepeatIsANewEntry()
{
    QLineUpDownEdit edit;
    for (const char *line : {"one", "two", "one"})
        enter(edit, line);
    QCOMPARE(edit.history, QList<QString>({"one", "two", "one"}));
}

void LineEditTests::caseMakesALineDiffer()
{
    QLineUpDownEdit edit;
    enter(edit, "one");
    enter(edit, "One");
    QCOMPARE(edit.history, QList<QString>({"One", "one"}));
}

void LineEditTests::emptyLineIsAddedLikeAnyOther()
{
    QLineUpDownEdit edit;
    for (const char *line : {"", "", "one", ""})
        enter(edit, line);
    QCOMPARE(edit.history, QList<QString>({"", "one", ""}));
}

void LineEditTests::fiftyFirstLineDropsTheOldest()
{
    QLineUpDownEdit edit;
    for (int i = 1; i <= 50; ++i)
        enter(edit, QString::number(i));
    QCOMPARE(edit.history.size(), 50);
    QCOMPARE(edit.history.last(), QStringLiteral("1"));

    enter(edit, "51");
    QCOMPARE(edit.history.size(), 50);
    QCOMPARE(edit.history.first(), QStringLiteral("51"));
    QCOMPARE(edit.history.last(), QStringLiteral("2"));
}

void LineEditTests::historyIsKeptBeforeReturnIsHeard()
{
    QLineUpDownEdit edit;
    QList<QString> heard;
    connect(&edit, &QLineEdit::returnPressed, this, [&] { heard = edit.history; });
    enter(edit, "one");
    QCOMPARE(heard, QList<QString>({"one"}));
}

void LineEditTests::recalledLineIsSelected()
{
    QLineUpDownEdit edit;
    enter(edit, "one");
    enter(edit, "two");
    press(edit, Qt::Key_Up);
    QCOMPARE(edit.selectedText(), QStringLiteral("one"));
    press(edit, Qt::Key_Down);
    QCOMPARE(edit.selectedText(), QStringLiteral("two"));
}

void LineEditTests::editingDoesNotMoveTheIndex()
{
    QLineUpDownEdit edit;
    for (const char *line : {"one", "two", "three"})
        enter(edit, line);
    press(edit, Qt::Key_Up);
    QTest::keyClicks(&edit, "edited");
    QCOMPARE(edit.text(), QStringLiteral("edited"));
    QCOMPARE(press(edit, Qt::Key_Up), QStringLiteral("one"));
}

void LineEditTests::refusedRepeatStartsFromTheFrontAgain()
{
    QLineUpDownEdit edit;
    for (const char *line : {"one", "two", "three"})
        enter(edit, line);
    press(edit, Qt::Key_Up);
    press(edit, Qt::Key_Up);
    QCOMPARE(edit.historyIndex, 2);
    enter(edit, "three");
    QCOMPARE(edit.historyIndex, 0);
    QCOMPARE(press(edit, Qt::Key_Up), QStringLiteral("two"));
}

void LineEditTests::otherKeysAreTypedAsUsual()
{
    QLineUpDownEdit edit;
    QTest::keyClicks(&edit, "abc");
    QTest::keyClick(&edit, Qt::Key_Home);
    QTest::keyClick(&edit, Qt::Key_Delete);
    QCOMPARE(edit.text(), QStringLiteral("bc"));
    QVERIFY(edit.history.isEmpty());
}

PADSCOPE_TESTS(LineEditTests);
#include "tst_lineedit.moc"
