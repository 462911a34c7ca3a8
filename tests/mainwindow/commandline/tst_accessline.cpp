#include "mainwindow/testwindow.h"
#include "support/accesstree.h"
#include "support/otherstore.h"

/// The command line by the interfaces that screen readers and their like use.
class AccessLine : public QObject
{
    Q_OBJECT

private slots:
    void init() { otherStore().clear(); }
    void sendsByAction();
    void keepsTheHistory();
    void namesTheAction();
    void mayBeDeletedByTheAction();
    void edits_data();
    void edits();
    void isUndone();
    void staysReadOnly_data();
    void staysReadOnly();
    void hidesWhatTheHostHides();
    void selects();
    void tellsWhereCharactersAre();
    void tellsNothingWhileTheLineEnds();
    void endsWithTheLine();
};

namespace {

const QString press = QAccessibleActionInterface::pressAction();

/// A host that deletes what a key comes to.
class DeletedByKey : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        delete watched;
        return true;
    }
};

QString perform(QAccessibleInterface &line, const QString &edit)
{
    QAccessibleEditableTextInterface *text = line.editableTextInterface();
    const QStringList words = edit.split(' ');
    if (words[0] == "insert")
        text->insertText(words[1].toInt(), words[2]);
    else if (words[0] == "delete")
        text->deleteText(words[1].toInt(), words[2].toInt());
    else if (words[0] == "replace")
        text->replaceText(words[1].toInt(), words[2].toInt(), words[3]);
    else
        line.setText(QAccessible::Value, words[1]);
    return line.text(QAccessible::Value);
}

} // namespace

void AccessLine::sendsByAction()
{
    TestWindow window;
    QAccessibleInterface *line = accessOf(window.commandLine);
    line->editableTextInterface()->insertText(0, "A");
    line->actionInterface()->doAction(press);
    QCOMPARE(takeCommands(window.library), QStringList({debugMode, commandA}));
    QCOMPARE(window.commandLine->selectedText(), QString("A"));
    line->actionInterface()->doAction(press);
    QCOMPARE(takeCommands(window.library), QStringList(commandA));
    line->actionInterface()->doAction("no such action");
    QCOMPARE(takeCommands(window.library), QStringList());
}

void AccessLine::keepsTheHistory()
{
    TestWindow window;
    QAccessibleInterface *line = accessOf(window.commandLine);
    for (const char *text : {"one", "two"}) {
        line->setText(QAccessible::Value, text);
        line->actionInterface()->doAction(press);
    }
    QCOMPARE(window.commandLine->historyLines(), QStringList({"two", "one"}));
    QTest::keyClick(window.commandLine, Qt::Key_Up);
    QCOMPARE(line->text(QAccessible::Value), QString("one"));
}

void AccessLine::namesTheAction()
{
    QLineUpDownEdit edit;
    QAccessibleActionInterface *actions = accessOf(&edit)->actionInterface();
    QCOMPARE(actions->actionNames(), QStringList({"SetFocus", "Press"}));
    QCOMPARE(actions->localizedActionName(press), QString("Send"));
    QCOMPARE(actions->localizedActionDescription(press), QString("Sends the command to the first board"));
    QCOMPARE(actions->keyBindingsForAction(press), QStringList("Return"));
    QCOMPARE(actions->keyBindingsForAction("SetFocus"), QStringList());
}

void AccessLine::mayBeDeletedByTheAction()
{
    const QPointer<QLineUpDownEdit> edit(new QLineUpDownEdit);
    DeletedByKey host;
    edit->installEventFilter(&host);
    accessOf(edit)->actionInterface()->doAction(press);
    QVERIFY(!edit);
}

void AccessLine::edits_data()
{
    addColumns<QString, QString>("edit", "text");
    addRow("in front", "insert 0 X", "Xabcdef");
    addRow("in the middle", "insert 3 XY", "abcXYdef");
    addRow("behind the end", "insert 99 X", "abcdefX");
    addRow("before the beginning", "insert -5 X", "Xabcdef");
    addRow("a part deleted", "delete 1 3", "adef");
    addRow("nothing deleted", "delete 2 2", "abcdef");
    addRow("all deleted", "delete -1 99", "");
    addRow("from the end to the beginning", "delete 3 1", "adef");
    addRow("replaced", "replace 0 6 X", "X");
    addRow("replaced by nothing", "replace 2 4 ", "abef");
    addRow("set", "set X", "X");
}

void AccessLine::edits()
{
    QFETCH(QString, edit);
    QLineUpDownEdit line;
    line.setText("abcdef");
    QTEST(perform(*accessOf(&line), edit), "text");
    QCOMPARE(accessOf(&line)->textInterface()->text(0, 99), line.text());
    QCOMPARE(accessOf(&line)->textInterface()->characterCount(), line.text().size());
}

void AccessLine::isUndone()
{
    QLineUpDownEdit line;
    line.insert("abc");
    perform(*accessOf(&line), "set X");
    line.undo();
    QCOMPARE(line.text(), QString("abc"));
}

void AccessLine::staysReadOnly_data()
{
    addColumns<bool>("disabled");
    addRow("read-only", false);
    addRow("disabled", true);
}

void AccessLine::staysReadOnly()
{
    QFETCH(bool, disabled);
    QLineUpDownEdit line;
    line.setText("abc");
    QVERIFY(accessOf(&line)->state().editable);
    line.setReadOnly(!disabled);
    line.setEnabled(!disabled);
    for (const char *edit : {"insert 0 X", "delete 0 3", "replace 0 3 X", "set X"})
        QCOMPARE(perform(*accessOf(&line), edit), QString("abc"));
    QVERIFY(!accessOf(&line)->state().editable);
    QCOMPARE(bool(accessOf(&line)->state().readOnly), !disabled);
}

void AccessLine::hidesWhatTheHostHides()
{
    QLineUpDownEdit line;
    line.setText("secret");
    line.setEchoMode(QLineEdit::Password);
    QAccessibleInterface *access = accessOf(&line);
    QVERIFY(access->state().passwordEdit);
    QVERIFY(!access->text(QAccessible::Value).contains('s'));
    QVERIFY(!access->textInterface()->text(0, 6).contains('s'));
    line.setEchoMode(QLineEdit::NoEcho);
    QCOMPARE(access->textInterface()->text(0, 6), QString());
}

void AccessLine::selects()
{
    QLineUpDownEdit line;
    line.setText("abcdef");
    QAccessibleTextInterface *text = accessOf(&line)->textInterface();
    QCOMPARE(text->selectionCount(), 0);
    text->addSelection(1, 4);
    QCOMPARE(line.selectedText(), QString("bcd"));
    int start = -1;
    int end = -1;
    text->selection(0, &start, &end);
    QCOMPARE(start, 1);
    QCOMPARE(end, 4);
    text->selection(1, &start, &end);
    QCOMPARE(end, 0);
    text->removeSelection(0);
    QVERIFY(!line.hasSelectedText());
    text->setCursorPosition(-3);
    QCOMPARE(text->cursorPosition(), 0);
    text->setCursorPosition(99);
    QCOMPARE(line.cursorPosition(), 6);
    text->scrollToSubstring(0, 2);
    QCOMPARE(line.cursorPosition(), 2);
    int first = -1;
    QCOMPARE(text->attributes(2, &first, &end), QString());
    QCOMPARE(first, 0);
    QCOMPARE(end, 6);
}

void AccessLine::tellsWhereCharactersAre()
{
    QLineUpDownEdit line;
    line.resize(300, line.sizeHint().height());
    line.setText("Wide i");
    line.show();
    QVERIFY(QTest::qWaitForWindowExposed(&line));
    QAccessibleTextInterface *text = accessOf(&line)->textInterface();
    for (int offset = 0; offset < 6; ++offset) {
        const QRect place = text->characterRect(offset);
        QVERIFY(accessOf(&line)->rect().contains(place));
        QCOMPARE(text->offsetAtPoint(place.center() - QPoint(place.width() / 4, 0)), offset);
    }
    QCOMPARE(text->characterRect(6), QRect());
    QCOMPARE(text->characterRect(-1), QRect());
}

void AccessLine::tellsNothingWhileTheLineEnds()
{
    auto line = std::make_unique<QLineUpDownEdit>();
    QAccessible::Id id = 0;
    int asked = 0;
    // Connected before Qt makes, and so called before Qt deletes the accessible object, at the same signal.
    connect(line.get(), &QObject::destroyed, this, [&] {
        QAccessibleInterface *access = QAccessible::accessibleInterface(id);
        QVERIFY(!access->isValid());
        QVERIFY(access->state().invalid);
        QCOMPARE(described(*access), QString("EditableText"));
        QCOMPARE(access->actionInterface()->actionNames(), QStringList());
        access->actionInterface()->doAction(press);
        QCOMPARE(perform(*access, "insert 0 X"), QString());
        QAccessibleTextInterface *text = access->textInterface();
        text->setSelection(0, 0, 1);
        text->removeSelection(0);
        text->setCursorPosition(1);
        QCOMPARE(text->text(0, 3), QString());
        QCOMPARE(text->cursorPosition(), 0);
        QCOMPARE(text->selectionCount(), 0);
        QCOMPARE(text->offsetAtPoint({0, 0}), -1);
        QCOMPARE(text->characterRect(0), QRect());
        ++asked;
    });
    id = QAccessible::uniqueId(accessOf(line.get()));
    line.reset();
    QCOMPARE(asked, 1);
}

void AccessLine::endsWithTheLine()
{
    auto line = std::make_unique<QLineUpDownEdit>();
    const QAccessible::Id id = QAccessible::uniqueId(accessOf(line.get()));
    QVERIFY(QAccessible::accessibleInterface(id)->isValid());
    line.reset();
    QCOMPARE(QAccessible::accessibleInterface(id), nullptr);
}

PADSCOPE_TESTS(AccessLine);
#include "tst_accessline.moc"
