#include "mainwindow/testwindow.h"
#include "support/markingtranslator.h"
#include "support/otherstore.h"

/// The command history in the settings store.
class HistoryTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void load_data();
    void load();
    void eachRestartReversesTheOrder();
    void thirtyOneLinesAreWrittenAndThirtyRead();
    void staleKeysStay();
    void linesSurviveAsTheyAre_data();
    void linesSurviveAsTheyAre();
    void keysAreTranslated();
};

namespace {

QString storedLine(int index)
{
    return otherStore().value(QString("history/%1").arg(index)).toString();
}

/// The history that a new window loads.
QStringList loadedHistory()
{
    const TestWindow window;
    return window.commandLine->historyLines();
}

/// Closes a window that has these lines entered, the last one last.
void closeAfter(const QStringList &lines)
{
    TestWindow window;
    for (const QString &line : lines)
        window.commandLine->addToHistory(line);
    window.close();
}

/// "line 11" to "line 40" and so on.
QStringList numberedLines(int first, int last)
{
    QStringList lines;
    for (int i = first; i <= last; ++i)
        lines += QString("line %1").arg(i);
    return lines;
}

} // namespace

void HistoryTests::init()
{
    otherStore().clear();
}

void HistoryTests::load_data()
{
    addColumns<QVariantMap, QStringList>("stored", "loaded");
    addRow("nothing", QVariantMap{}, QStringList{});
    addRow("gap at the front", QVariantMap{{"1", "one"}}, QStringList{});
    addRow("gap in the middle", QVariantMap{{"0", "zero"}, {"1", "one"}, {"3", "three"}},
           QStringList{"one", "zero"});
    addRow("repeat next to itself", QVariantMap{{"0", "a"}, {"1", "a"}, {"2", "b"}, {"3", "a"}},
           QStringList{"a", "b", "a"});
    addRow("empty line", QVariantMap{{"0", "a"}, {"1", ""}, {"2", "b"}}, QStringList{"b", "", "a"});
    addRow("list", QVariantMap{{"0", QStringList{"a", "b"}}, {"1", "one"}}, QStringList{});
}

void HistoryTests::load()
{
    QFETCH(QVariantMap, stored);
    for (auto line = stored.cbegin(); line != stored.cend(); ++line)
        otherStore().setValue("history/" + line.key(), line.value());
    QTEST(loadedHistory(), "loaded");
}

void HistoryTests::eachRestartReversesTheOrder()
{
    closeAfter({"old", "middle", "new"});
    QCOMPARE(QStringList({storedLine(0), storedLine(1), storedLine(2)}),
             QStringList({"new", "middle", "old"}));
    QCOMPARE(loadedHistory(), QStringList({"old", "middle", "new"}));
    closeAfter({});
    QCOMPARE(loadedHistory(), QStringList({"new", "middle", "old"}));
}

void HistoryTests::thirtyOneLinesAreWrittenAndThirtyRead()
{
    otherStore().setValue("history/31", "stale");
    closeAfter(numberedLines(1, 40));
    for (int i = 0; i <= 30; ++i)
        QCOMPARE(storedLine(i), QString("line %1").arg(40 - i));
    QCOMPARE(storedLine(31), QString("stale"));
    QVERIFY(!otherStore().contains("history/32"));
    QCOMPARE(loadedHistory(), numberedLines(11, 40));

    // Thirty lines read back, none added: the key of index 30 is not written.
    closeAfter({});
    QCOMPARE(storedLine(0), QString("line 11"));
    QCOMPARE(storedLine(30), QString("line 10"));
    // Now 31: "line 11" is the oldest of those read back last.
    closeAfter({"another"});
    QCOMPARE(storedLine(0), QString("another"));
    QCOMPARE(storedLine(30), QString("line 11"));
}

void HistoryTests::staleKeysStay()
{
    otherStore().setValue("history/2", "stale");
    closeAfter({"a", "b"});
    QCOMPARE(QStringList({storedLine(0), storedLine(1), storedLine(2)}), QStringList({"b", "a", "stale"}));
    // As designed, what was left over is read again.
    QCOMPARE(loadedHistory(), QStringList({"stale", "a", "b"}));
}

void HistoryTests::linesSurviveAsTheyAre_data()
{
    QTest::addColumn<QString>("line");
    addRow("plain", "A1");
    addRow("blank", " ");
    addRow("blanks around", "  two  ");
    addRow("comma", "1,2");
    addRow("quote", "\"x\\");
    addRow("at sign", "@Invalid()");
    addRow("percent", "history/%1");
    addRow("not Latin-1", QString::fromUtf8("\xc3\xa9\xe2\x82\xac"));
}

void HistoryTests::linesSurviveAsTheyAre()
{
    QFETCH(QString, line);
    closeAfter({line});
    QCOMPARE(loadedHistory(), QStringList(line));
}

void HistoryTests::keysAreTranslated()
{
    otherStore().setValue("history/0", "untranslated");
    otherStore().setValue("{qorvexgraph: history/0}", "zero");
    otherStore().setValue("{qorvexgraph: history/1}", "one");
    const MarkingTranslator translator;
    QCOMPARE(loadedHistory(), QStringList({"one", "zero"}));
    closeAfter({"two"});
    QCOMPARE(otherStore().value("{qorvexgraph: history/0}"), QVariant("two"));
    QCOMPARE(otherStore().value("{qorvexgraph: history/2}"), QVariant("zero"));
    QCOMPARE(storedLine(0), QString("untranslated"));
    // The other keys are not.
    QVERIFY(otherStore().contains("Monitor Font"));
    QVERIFY(otherStore().contains("Monitor Font Size"));
    QVERIFY(otherStore().contains("Log To File"));
}

PADSCOPE_TESTS(HistoryTests);
#include "tst_history.moc"
