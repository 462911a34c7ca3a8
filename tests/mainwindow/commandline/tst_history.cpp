#include <QSettings>

#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/tests.h"

/// The command history in the settings store.
class HistoryTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void emptyStoreGivesEmptyHistory();
    void gapAtTheFrontEndsTheLoad();
    void gapInTheMiddleEndsTheLoad();
    void eachRestartReversesTheOrder();
    void repeatNextToItselfIsReadOnce();
    void thirtyOneOfFortyAreWritten();
    void thirtyAreReadBack();
    void lineUnderIndexThirtyStays();
    void staleKeysStay();
    void nothingIsWrittenBeforeClosing();
    void linesSurviveAsTheyAre_data();
    void linesSurviveAsTheyAre();
    void listInTheFileEndsTheLoad();
};

namespace {

struct Store : QSettings
{
    Store()
        : QSettings(QStringLiteral("Corvane"), QStringLiteral("qorvexgraph"))
    {
    }

    QString line(int index) const { return value(QStringLiteral("history/%1").arg(index)).toString(); }
    void setLine(int index, const QString &line) { setValue(QStringLiteral("history/%1").arg(index), line); }
};

/// The history that a new window loads.
QList<QString> loadedHistory()
{
    const qorvexgraph window;
    return window.commandLine->history;
}

/// Closes a window that has these lines entered, the last one last.
void closeAfter(const QStringList &lines)
{
    qorvexgraph window;
    for (const QString &line : lines)
        window.commandLine->addToHistory(line);
    window.close();
}

/// "line 1" to "line 40" and so on.
QStringList numberedLines(int count)
{
    QStringList lines;
    for (int i = 1; i <= count; ++i)
        lines += QStringLiteral("line %1").arg(i);
    return lines;
}

} // namespace

void HistoryTests::init()
{
    Store().clear();
}

void HistoryTests::emptyStoreGivesEmptyHistory()
{
    QCOMPARE(loadedHistory(), QList<QString>());
}

void HistoryTests::gapAtTheFrontEndsTheLoad()
{
    Store().setLine(1, "one");
    QCOMPARE(loadedHistory(), QList<QString>());
    Store().setLine(0, "zero");
    QCOMPARE(loadedHistory(), QList<QString>({"one", "zero"}));
}

void HistoryTests::gapInTheMiddleEndsTheLoad()
{
    Store store;
    store.setLine(0, "zero");
    store.setLine(1, "one");
    store.setLine(3, "three");
    QCOMPARE(loadedHistory(), QList<QString>({"one", "zero"}));
}

void HistoryTests::eachRestartReversesTheOrder()
{
    closeAfter({"old", "middle", "new"});
    QCOMPARE(Store().line(0), QStringLiteral("new"));
    QCOMPARE(Store().line(1), QStringLiteral("middle"));
    QCOMPARE(Store().line(2), QStringLiteral("old"));
    QCOMPARE(loadedHistory(), QList<QString>({"old", "middle", "new"}));
    closeAfter({});
    QCOMPARE(loadedHistory(), QList<QString>({"new", "middle", "old"}));
}

void HistoryTests::repeatNextToItselfIsReadOnce()
{
    Store store;
    store.setLine(0, "a");
    store.setLine(1, "a");
    store.setLine(2, "b");
    store.setLine(3, "a");
    QCOMPARE(loadedHistory(), QList<QString>({"a", "b", "a"}));
}

void HistoryTests::thirtyOneOfFortyAreWritten()
{
    Store().setLine(31, "stale");
    closeAfter(numberedLines(40));
    const Store store;
    for (int i = 0; i <= 30; ++i)
        QCOMPARE(store.line(i), QStringLiteral("line %1").arg(40 - i));
    QCOMPARE(store.line(31), QStringLiteral("stale"));
    QVERIFY(!store.contains("history/32"));
}

void HistoryTests::thirtyAreReadBack()
{
    closeAfter(numberedLines(40));
    const QList<QString> history = loadedHistory();
    QCOMPARE(history.size(), 30);
    for (int i = 0; i < 30; ++i)
        QCOMPARE(history.at(i), QStringLiteral("line %1").arg(11 + i));
}

void HistoryTests::lineUnderIndexThirtyStays()
{
    closeAfter(numberedLines(40));
    QCOMPARE(Store().line(30), QStringLiteral("line 10"));
    // Thirty lines read back, none added: the key of index 30 is not written.
    closeAfter({});
    QCOMPARE(Store().line(0), QStringLiteral("line 11"));
    QCOMPARE(Store().line(30), QStringLiteral("line 10"));
    // Now 31: "line 11" is the oldest of those read back last.
    closeAfter({"another"});
    QCOMPARE(Store().line(0), QStringLiteral("another"));
    QCOMPARE(Store().line(30), QStringLiteral("line 11"));
}

void HistoryTests::staleKeysStay()
{
    Store().setLine(2, "stale");
    {
        qorvexgraph window;
        window.commandLine->history = QList<QString>{"b", "a"};
        window.close();
    }
    QCOMPARE(Store().line(0), QStringLiteral("b"));
    QCOMPARE(Store().line(1), QStringLiteral("a"));
    QCOMPARE(Store().line(2), QStringLiteral("stale"));
    // As designed, what was left over is read again.
    QCOMPARE(loadedHistory(), QList<QString>({"stale", "a", "b"}));
}

void HistoryTests::nothingIsWrittenBeforeClosing()
{
    qorvexgraph window;
    window.commandLine->addToHistory("one");
    window.hide();
    QVERIFY(!Store().contains("history/0"));
    window.close();
    QCOMPARE(Store().line(0), QStringLiteral("one"));
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
    QCOMPARE(loadedHistory(), QList<QString>({line}));
}

void HistoryTests::listInTheFileEndsTheLoad()
{
    Store().setValue("history/0", QStringList({"a", "b"}));
    QCOMPARE(loadedHistory(), QList<QString>());
}

PADSCOPE_TESTS(HistoryTests);
#include "tst_history.moc"
