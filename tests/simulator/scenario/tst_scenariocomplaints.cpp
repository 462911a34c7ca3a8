#include "scenarioreader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

/// The one line about a scenario file that is not taken, and its twin that is.
class tst_scenariocomplaints : public QObject
{
    Q_OBJECT

private slots:
    void complaints_data();
    void complaints();
    void boundsAreAllowed_data();
    void boundsAreAllowed();
    void filesThatAreNone();
    void aFileThatIsTooLarge();
    void cutFilesAreRefused();

private:
    QString written(const QByteArray &text) const;

    QTemporaryDir folder;
};

namespace {

/// A scenario with one board and this among its keys.
QByteArray withBoard(const QByteArray &keys)
{
    return R"({"title": "t", "boards": [{"id": 1}], )" + keys + "}";
}

QByteArray withBoardKeys(const QByteArray &keys)
{
    return R"({"title": "t", "boards": [{"id": 1, )" + keys + "}]}";
}

} // namespace

QString tst_scenariocomplaints::written(const QByteArray &text) const
{
    const QString path = folder.filePath("s.json");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("the file cannot be written");
    return path;
}

void tst_scenariocomplaints::complaints_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("line"); // behind the file's name
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &line) {
        QTest::newRow(name) << text << line;
    };
    row("no title", R"({"boards": []})", "/: the key \"title\" is missing; it is needed here");
    row("no object", "[]",
        "/: [] is not an object; allowed is one with $schema, title, seed, boards, timeline, faults");
    row("unknown key", R"({"title": "t", "boards": [], "board": 1})",
        "/: the key \"board\" is not known; allowed are $schema, title, seed, boards, timeline, faults");
    row("unknown key of a board", withBoardKeys(R"("ratte": 5)"),
        "/boards/0: the key \"ratte\" is not known; allowed are id, rate, seed, plugged, kinds, lines, "
        "unknowns, pen, adcMax");
    row("wrong type", withBoardKeys(R"("rate": "fast")"),
        "/boards/0/rate: \"fast\" is not allowed; allowed is a whole number from 1 to 10000");
    row("rate of 0", withBoardKeys(R"("rate": 0)"),
        "/boards/0/rate: 0 is not allowed; allowed is a whole number from 1 to 10000");
    row("rate too high", withBoardKeys(R"("rate": 10001)"),
        "/boards/0/rate: 10001 is not allowed; allowed is a whole number from 1 to 10000");
    row("rate with a fraction", withBoardKeys(R"("rate": 2.5)"),
        "/boards/0/rate: 2.5 is not allowed; allowed is a whole number from 1 to 10000");
    row("number beyond 64 bits", withBoardKeys(R"("rate": 18446744073709551615)"),
        "/boards/0/rate: 18446744073709551615 is not allowed; allowed is a whole number from 1 to 10000");
    row("truth in words", withBoardKeys(R"("plugged": "yes")"),
        "/boards/0/plugged: \"yes\" is not allowed; allowed are true and false");
    row("id too large", R"({"title": "t", "boards": [{"id": 2147483648}]})",
        "/boards/0/id: 2147483648 is not allowed; allowed is a whole number from -2147483648 to 2147483647");
    row("unknown pen", withBoardKeys(R"("pen": "red")"),
        "/boards/0/pen: this pen is not known; allowed are writing, away and a list of points");
    row("pen without points", withBoardKeys(R"("pen": [])"),
        "/boards/0/pen: there are 0; allowed is a list of 1 to 100");
    row("point beside the board", withBoardKeys(R"("pen": [{"seconds": 1, "x": 16001, "y": 0}])"),
        "/boards/0/pen/0/x: 16001 is not allowed; allowed is a number from 0.0 to 16000.0");
    row("voltages beyond ten bits", withBoardKeys(R"("adcMax": 1024)"),
        "/boards/0/adcMax: 1024 is not allowed; allowed is a whole number from 100 to 1023");
    row("no kind left", withBoardKeys(R"("kinds": {"phase": 0})"),
        "/boards/0/kinds: no kind is left; allowed is an object with at least one number above 0");
    row("negative weight", withBoardKeys(R"("kinds": {"phase": -1})"),
        "/boards/0/kinds/phase: -1 is not allowed; allowed is a whole number from 0 to 100");
    row("too fast together", R"({"title": "t", "boards": [{"id": 1, "rate": 10000}, {"id": 2, "rate": 10000},
        {"id": 3, "rate": 1}]})",
        "/boards: together they would send 20001 reports a second; allowed are up to 20000");
    row("too fast together, later", R"({"title": "t", "boards": [{"id": 1, "rate": 10000}, {"id": 2,
        "rate": 9000}, {"id": 3}], "timeline": [{"at": 1, "do": "rate", "board": 3, "rate": 1001}]})",
        "/boards: together they would send 20001 reports a second; allowed are up to 20000");
    row("unknown board", withBoard(R"("timeline": [{"at": 1, "do": "plug", "board": 2}])"),
        "/timeline/0/board: there is no board 2; allowed are 1");
    row("unknown event", withBoard(R"("timeline": [{"at": 1, "do": "explode", "board": 1}])"),
        "/timeline/0/do: this is not known; allowed are plug, unplug, burst, rate, pause, text, raw");
    row("key of another event", withBoard(R"("timeline": [{"at": 1, "do": "burst", "board": 1, "rate": 1}])"),
        "/timeline/0: the key \"rate\" is not known; allowed are at, do, board, reports");
    row("event without a time", withBoard(R"("timeline": [{"do": "burst", "board": 1, "reports": 1}])"),
        "/timeline/0: the key \"at\" is missing; it is needed here");
    row("event before the start",
        withBoard(R"("timeline": [{"at": -1, "do": "burst", "board": 1, "reports": 1}])"),
        "/timeline/0/at: -1 is not allowed; allowed is a number from 0.0 to 86400.0");
    row("half a byte", withBoard(R"("timeline": [{"at": 1, "do": "raw", "board": 1, "hex": "0a1"}])"),
        "/timeline/0/hex: these are not bytes; allowed are up to 10000 pairs of hexadecimal digits with "
        "blanks "
        "between them");
    row("no digit", withBoard(R"("timeline": [{"at": 1, "do": "raw", "board": 1, "hex": "0g"}])"),
        "/timeline/0/hex: these are not bytes; allowed are up to 10000 pairs of hexadecimal digits with "
        "blanks "
        "between them");
    row("not Latin-1", withBoard(R"("timeline": [{"at": 1, "do": "text", "board": 1, "text": "\u0100"}])"),
        "/timeline/0/text: a character is not Latin-1; allowed are the characters up to U+00FF");
    row("an event that is no object", withBoard(R"("timeline": [5])"),
        "/timeline/0: the key \"do\" is missing; it is needed here");
    row("unknown fault", withBoard(R"("faults": [{"fault": "fire"}])"),
        "/faults/0/fault: this fault is not known; allowed are vanish, plug-storm, flood, garbage, "
        "all-types, "
        "text-endless, text-long, text-markup, text-every-byte, slow-command, callback-in-command, "
        "enumeration-fails, lying-count");
    row("amount of another fault", withBoard(R"("faults": [{"fault": "vanish", "by": 1}])"),
        "/faults/0: the key \"by\" is not known; allowed are at, fault, board");
    row("fault without a board", R"({"title": "t", "boards": [], "faults": [{"fault": "flood"}]})",
        "/faults/0: the fault flood needs a board; there is none");
    row("twice the same key", R"({"title": "t", "title": "u", "boards": []})",
        "line 1, column 22: the key \"title\" stands twice in one object; once is allowed");
    row("twice the same key of a board", R"({"title": "t", "boards": [{"id": 1}, {"id": 2, "id": 3}]})",
        "line 1, column 51: the key \"id\" stands twice in one object; once is allowed");
    row("twice the same key behind others",
        R"({"title": "t", "boards": [5, [], {"id": 2, "kinds": {"phase": 1, "phase": 1}}]})",
        "line 1, column 72: the key \"phase\" stands twice in one object; once is allowed");
    row("number beyond all", withBoardKeys(R"("rate": 1e999)"),
        "line 1, column 50: this cannot be read: number overflow parsing '1e999'; allowed are numbers from "
        "-1.7e308 to 1.7e308");
    row("number beyond all in a list", R"({"title": "t", "boards": [{"id": 1}, -1e999]})",
        "line 1, column 44: this cannot be read: number overflow parsing '-1e999'; allowed are numbers from "
        "-1.7e308 to 1.7e308");
    row("nothing but a number beyond all", "1e999",
        "line 1, column 5: this cannot be read: number overflow parsing '1e999'; allowed are numbers from "
        "-1.7e308 to "
        "1.7e308");
    row("nested too deep", R"({"title": )" + QByteArray(32, '[') + QByteArray(32, ']') + "}",
        "line 1, column 42: "
        "the lists and objects are nested too deep; allowed are 32 in one another");
    row("nested as deep as can be", R"({"title": )" + QByteArray(31, '[') + QByteArray(31, ']') + "}",
        "/title: " + QByteArray(31, '[') + QByteArray(9, ']') +
            "... is not allowed; allowed is text in quotes");
    row("nested far too deep", R"({"title": )" + QByteArray(500000, '['),
        "line 1, column 42: "
        "the lists and objects are nested too deep; allowed are 32 in one another");
    row("not JSON", "{\n  \"title\": }",
        "line 2, column 12: this is not JSON: syntax error while parsing value - unexpected '}'; expected "
        "'[', "
        "'{', or a literal");
    row("empty", "",
        "line 1, column 1: this is not JSON: syntax error while parsing value - unexpected end of "
        "input; expected '[', '{', or a literal");
    row("more behind it", "{} x",
        "line 1, column 4: this is not JSON: syntax error while parsing value - invalid literal; last read: "
        "'{} x'; expected end of input");
}

void tst_scenariocomplaints::complaints()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, line);
    const QString path = written(text);
    std::string complaint;
    QVERIFY(!readScenario(path.toStdString(), complaint));
    QCOMPARE(QByteArray::fromStdString(complaint), path.toLocal8Bit() + ": " + line);
}

void tst_scenariocomplaints::boundsAreAllowed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("lowest rate") << withBoardKeys(R"("rate": 1)");
    QTest::newRow("highest rate") << withBoardKeys(R"("rate": 10000)");
    QTest::newRow("highest voltage") << withBoardKeys(R"("adcMax": 1023)");
    QTest::newRow("together 20000") << QByteArray(
        R"({"title": "t", "boards": [{"id": 1, "rate": 10000}, {"id": 2, "rate": 10000}]})");
    QTest::newRow("least id") << QByteArray(R"({"title": "t", "boards": [{"id": -2147483648}]})");
    QTest::newRow("greatest id") << QByteArray(R"({"title": "t", "boards": [{"id": 2147483647}]})");
    QTest::newRow("last day") << withBoard(
        R"("timeline": [{"at": 86400, "do": "burst", "board": 1, "reports": 1}])");
    QTest::newRow("no bytes") << withBoard(R"("timeline": [{"at": 1, "do": "raw", "board": 1, "hex": ""}])");
    QTest::newRow("no lie") << withBoard(R"("faults": [{"fault": "lying-count", "by": 0}])");
}

void tst_scenariocomplaints::boundsAreAllowed()
{
    QFETCH(QByteArray, text);
    std::string complaint;
    QVERIFY2(readScenario(written(text).toStdString(), complaint), complaint.c_str());
}

void tst_scenariocomplaints::filesThatAreNone()
{
    std::string complaint;
    const std::string missing = folder.filePath("missing.json").toStdString();
    QVERIFY(!readScenario(missing, complaint));
    QCOMPARE(complaint,
             missing + ": this cannot be read (No such file or directory); a scenario file is needed");
    const std::string directory = folder.path().toStdString();
    QVERIFY(!readScenario(directory, complaint));
    QCOMPARE(complaint,
             directory + ": this cannot be read (it is not a regular file); a scenario file is needed");
    QVERIFY(!readScenario("two\nlines", complaint));
    QCOMPARE(
        complaint,
        std::string("two?lines: this cannot be read (No such file or directory); a scenario file is needed"));
    const QString loop = folder.filePath("loop.json");
    QVERIFY(QFile::link(loop, loop));
    QVERIFY(!readScenario(loop.toStdString(), complaint));
    QCOMPARE(complaint, loop.toStdString() + ": this cannot be read (Too many levels of symbolic links); "
                                             "a scenario file is needed");
}

void tst_scenariocomplaints::aFileThatIsTooLarge()
{
    const QString path = written(QByteArray(1024 * 1024 + 1, ' '));
    std::string complaint;
    QVERIFY(!readScenario(path.toStdString(), complaint));
    QCOMPARE(complaint, path.toStdString() + ": the file is too large; allowed are up to 1048576 bytes");
}

// Never is a part of a file read.
void tst_scenariocomplaints::cutFilesAreRefused()
{
    QFile file(SCENARIO_FOLDER "/timeline.json");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll().trimmed();
    QVERIFY(whole.size() > 500);
    for (int length = 0; length < whole.size(); ++length) {
        std::string complaint;
        QVERIFY(!readScenario(written(whole.left(length)).toStdString(), complaint));
        QVERIFY(complaint.find("this is not JSON") != std::string::npos);
        QCOMPARE(complaint.find('\n'), std::string::npos);
    }
    std::string complaint;
    QVERIFY2(readScenario(written(whole).toStdString(), complaint), complaint.c_str());
}

QTEST_APPLESS_MAIN(tst_scenariocomplaints)
#include "tst_scenariocomplaints.moc"
