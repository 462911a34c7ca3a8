#include <QLineEdit>
#include <QRandomGenerator>

#include "qlineupdownedit.h"
#include "support/accesstree.h"
#include "support/tests.h"

/// The command line's accessible object beside that which Qt has for a line edit, driven by the same random
/// events. What differs by intention is said where it is left out.
class tst_plainline : public QObject
{
    Q_OBJECT

private slots:
    void tellsWhatAPlainOneTells_data();
    void tellsWhatAPlainOneTells();
    void findsWordsAtBothEnds_data();
    void findsWordsAtBothEnds();
};

namespace {

struct Side
{
    explicit Side(QLineEdit *lineEdit)
        : edit(lineEdit)
        , access(accessOf(lineEdit))
        , text(access->textInterface())
        , editing(access->editableTextInterface())
    {
        edit->resize(160, 30);
        edit->show();
    }

    QRect placeOf(const QRect &global) const { return global.translated(-edit->mapToGlobal(QPoint())); }

    QLineEdit *edit;
    QAccessibleInterface *access;
    QAccessibleTextInterface *text;
    QAccessibleEditableTextInterface *editing;
};

using Step = std::function<void(const Side &)>;

const QString words = "U8 gain:12 \u00e9t\u00e9 \u65e5\u672c ...WWW iii, B";

QString randomText(QRandomGenerator &random)
{
    const int start = random.bounded(words.size());
    return words.mid(start, random.bounded(12));
}

/// Qt's own sets the whole text and forgets what could be undone, so that its cursor is elsewhere: it is set.
Step editing(int kind, int start, int end, const QString &text, int cursor)
{
    return [=](const Side &side) {
        if (kind == 0)
            side.editing->insertText(start, text);
        else if (kind == 1)
            side.editing->deleteText(start, end);
        else if (kind == 2)
            side.editing->replaceText(start, end, text);
        else
            side.access->setText(QAccessible::Value, text);
        side.text->setCursorPosition(cursor);
    };
}

Step pressing(QRandomGenerator &random)
{
    static constexpr Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right,     Qt::Key_Home,
                                       Qt::Key_End,  Qt::Key_Backspace, Qt::Key_Delete};
    const Qt::Key key = keys[random.bounded(6)];
    const Qt::KeyboardModifiers modifiers = random.bounded(2) == 0 ? Qt::NoModifier : Qt::ShiftModifier;
    return [=](const Side &side) { QTest::keyClick(side.edit, key, modifiers); };
}

Step nextStep(QRandomGenerator &random, int count)
{
    const int start = random.bounded(count + 1);
    const int end = start + random.bounded(count + 1 - start);
    const QString text = randomText(random);
    switch (random.bounded(8)) {
    case 0:
        return [=](const Side &side) { side.edit->insert(text); };
    case 1:
    case 2:
        return pressing(random);
    case 3:
        return [=](const Side &side) { side.text->setSelection(0, start, end); };
    case 4:
        return [=](const Side &side) { side.text->addSelection(start, end); };
    case 5:
        return [=](const Side &side) { side.text->removeSelection(0); };
    case 6:
        return [=](const Side &side) { side.text->setCursorPosition(start); };
    default:
        return editing(random.bounded(4), start, end, text, 0);
    }
}

QString shown(const QRect &rect)
{
    return QString("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

QString stateOf(const Side &side)
{
    const QAccessible::State state = side.access->state();
    return QString("editable %1 readOnly %2 password %3 selectable %4 focusable %5 disabled %6 invisible %7")
        .arg(state.editable)
        .arg(state.readOnly)
        .arg(state.passwordEdit)
        .arg(state.selectableText)
        .arg(state.focusable)
        .arg(state.disabled)
        .arg(state.invisible);
}

/// All that is told of a place in the text.
QStringList toldAt(const Side &side, int offset, const QPoint &point)
{
    QStringList told;
    QList<QAccessible::TextBoundaryType> boundaries{QAccessible::CharBoundary, QAccessible::LineBoundary,
                                                    QAccessible::NoBoundary};
    // At either end Qt's own may search for them for ever.
    if (offset > 0 && offset < side.text->characterCount())
        boundaries << QAccessible::WordBoundary << QAccessible::SentenceBoundary;
    for (const auto boundary : boundaries) {
        int start = 0;
        int end = 0;
        told +=
            side.text->textAtOffset(offset, boundary, &start, &end) + QString(" %1-%2").arg(start).arg(end);
        told += side.text->textBeforeOffset(offset, boundary, &start, &end) +
                QString(" %1-%2").arg(start).arg(end);
        told += side.text->textAfterOffset(offset, boundary, &start, &end) +
                QString(" %1-%2").arg(start).arg(end);
    }
    int start = 0;
    int end = 0;
    told += side.text->attributes(offset, &start, &end) + QString(" %1-%2").arg(start).arg(end);
    told += QString::number(side.text->offsetAtPoint(side.edit->mapToGlobal(point)));
    if (offset < side.text->characterCount())
        told += QString::number(side.text->characterRect(offset).width()); // Qt's own leaves out the margins
    return told;
}

/// All that is told of the whole.
QStringList told(const Side &side)
{
    QStringList all{roleOf(*side.access),
                    side.access->text(QAccessible::Value),
                    stateOf(side),
                    QString::number(side.text->characterCount()),
                    QString::number(side.text->cursorPosition()),
                    QString::number(side.text->selectionCount()),
                    QString::number(side.access->childCount()),
                    shown(side.placeOf(side.access->rect())),
                    side.edit->text()};
    int start = 0;
    int end = 0;
    if (side.text->selectionCount() > 0)
        side.text->selection(0, &start, &end);
    return all << QString("%1-%2").arg(start).arg(end) << side.text->text(0, side.text->characterCount());
}

} // namespace

void tst_plainline::tellsWhatAPlainOneTells_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 0; seed < 20; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void tst_plainline::tellsWhatAPlainOneTells()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    QLineUpDownEdit commandLine;
    QLineEdit plainLine;
    const Side ours(&commandLine);
    const Side plain(&plainLine);
    for (int i = 0; i < 100; ++i) {
        const Step step = nextStep(random, plain.text->characterCount());
        step(ours);
        step(plain);
        QCOMPARE(told(ours), told(plain));
        const int offset = random.bounded(plain.text->characterCount() + 1);
        const QPoint point(random.bounded(160), random.bounded(30));
        QCOMPARE(toldAt(ours, offset, point), toldAt(plain, offset, point));
    }
}

void tst_plainline::findsWordsAtBothEnds_data()
{
    addColumns<QString, int, QString, int, int>("text", "offset", "word", "start", "end");
    addRow<QString, int, QString, int, int>("first word", "U8 gain", 0, "U8", 0, 2);
    addRow<QString, int, QString, int, int>("before the first word", " U8", 0, " ", 0, 1);
    addRow<QString, int, QString, int, int>("blanks alone", "  ", 0, "  ", 0, 2);
    addRow<QString, int, QString, int, int>("behind the last word", "U8 gain", 7, "", 7, 7);
    addRow<QString, int, QString, int, int>("at the end", "U8 gain", -1, "", 7, 7);
    addRow<QString, int, QString, int, int>("behind the last blank", "U8 ", 3, " ", 2, 3);
    addRow<QString, int, QString, int, int>("too far", "U8", 3, "", -1, -1);
    addRow<QString, int, QString, int, int>("before the text", "U8", -2, "", -1, -1);
    addRow<QString, int, QString, int, int>("no text", "", 0, "", -1, -1);
}

void tst_plainline::findsWordsAtBothEnds()
{
    QFETCH(QString, text);
    QFETCH(int, offset);
    QLineUpDownEdit commandLine;
    const Side side(&commandLine);
    commandLine.setText(text);
    int start = 0;
    int end = 0;
    QTEST(side.text->textAtOffset(offset, QAccessible::WordBoundary, &start, &end), "word");
    QTEST(start, "start");
    QTEST(end, "end");
    side.text->textAtOffset(offset, QAccessible::SentenceBoundary, &start, &end);
}

PADSCOPE_TESTS(tst_plainline);
#include "tst_plainline.moc"
