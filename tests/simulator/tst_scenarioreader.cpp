#include "simulator/scenarioreader.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

/// Scenario files: what is read, and the one line about what is not.
class tst_scenarioreader : public QObject
{
    Q_OBJECT

private slots:
    void smallestScenario();
    void everythingThatABoardMayHave();
    void seedsOfBoards();
    void eventsOfTheTimeline();
    void faultsOfBoards();
    void faultsOfTheLibrary();
    void shippedScenarios_data();
    void shippedScenarios();
    void theDefaultIsOneBoard();
    void complaints_data();
    void complaints();
    void boundsAreAllowed_data();
    void boundsAreAllowed();
    void filesThatAreNone();
    void aFileThatIsTooLarge();
    void cutFilesAreRefusedOrWhole();

private:
    QString written(const QByteArray &text) const;
    Scenario scenarioIn(const QByteArray &text) const;

    QTemporaryDir folder;
};

namespace {

using BoardWhat = BoardEvent::What;
using LibraryWhat = LibraryEvent::What;

constexpr std::chrono::nanoseconds oneSecond = std::chrono::seconds(1);

std::size_t indexOf(Kind kind)
{
    return static_cast<std::size_t>(kind);
}

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

QString tst_scenarioreader::written(const QByteArray &text) const
{
    const QString path = folder.filePath("s.json");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("the file cannot be written");
    return path;
}

Scenario tst_scenarioreader::scenarioIn(const QByteArray &text) const
{
    std::string complaint;
    const auto scenario = readScenario(written(text).toStdString(), complaint);
    if (!scenario)
        qFatal("%s", complaint.c_str());
    return *scenario;
}

void tst_scenarioreader::smallestScenario()
{
    const Scenario scenario = scenarioIn(R"({"title": "nothing", "boards": []})");
    QCOMPARE(scenario.title, std::string("nothing"));
    QVERIFY(scenario.boards.empty());
    QVERIFY(scenario.events.empty());
}

void tst_scenarioreader::everythingThatABoardMayHave()
{
    const Scenario scenario = scenarioIn(R"({"$schema": "x", "title": "t", "boards": [
        {"id": -2147483648, "rate": 10000, "seed": 4294967295, "plugged": false, "lines": false,
         "unknowns": false, "kinds": {"phase": 3, "garbage": 100, "adc": 0},
         "pen": [{"seconds": 0.5, "x": 16000, "y": 12000, "touches": true}]}, {"id": 7, "pen": "away"}]})");
    QCOMPARE(scenario.boards.size(), std::size_t{2});
    const BoardPlan &plan = scenario.boards[0].plan;
    QCOMPARE(plan.id, std::numeric_limits<int>::min());
    QCOMPARE(plan.rate, 10000);
    QCOMPARE(plan.seed, 4294967295U);
    QVERIFY(!scenario.boards[0].plugged);
    QVERIFY(!plan.lines);
    QVERIFY(!plan.unknowns);
    QCOMPARE(plan.weights[indexOf(Kind::Phase)], 3);
    QCOMPARE(plan.weights[indexOf(Kind::Garbage)], 100);
    QCOMPARE(plan.weights[indexOf(Kind::Signal1)], 0);
    QCOMPARE(plan.pen.points.size(), std::size_t{1});
    QCOMPARE(plan.pen.points[0].x, 16000.0);
    QVERIFY(plan.pen.points[0].touches);

    const BoardPlan &usual = scenario.boards[1].plan;
    QCOMPARE(usual.rate, 100);
    QVERIFY(scenario.boards[1].plugged);
    QVERIFY(usual.lines);
    QVERIFY(usual.pen.away);
    QCOMPARE(usual.weights[indexOf(Kind::Signal1)], 5);
    QCOMPARE(usual.weights[indexOf(Kind::Adc)], 0);
}

void tst_scenarioreader::seedsOfBoards()
{
    const Scenario scenario = scenarioIn(
        R"({"title": "t", "seed": 10, "boards": [{"id": 5}, {"id": 5}, {"id": 5, "seed": 3}, {"id": -1}]})");
    QCOMPARE(scenario.boards[0].plan.seed, 15U);
    QVERIFY(scenario.boards[1].plan.seed != 15U);
    QCOMPARE(scenario.boards[2].plan.seed, 3U);
    QCOMPARE(scenario.boards[3].plan.seed, 9U);
}

void tst_scenarioreader::eventsOfTheTimeline()
{
    const Scenario scenario = scenarioIn(withBoard(R"("timeline": [
        {"at": 3, "do": "burst", "board": 1, "reports": 200},
        {"at": 1, "do": "raw", "board": 1, "hex": "0A ff1b"},
        {"at": 2.5, "do": "text", "board": 1, "text": "\u00e9!"},
        {"at": 0, "do": "pause", "board": 1, "seconds": 0.25},
        {"at": 4, "do": "rate", "board": 1, "rate": 7},
        {"at": 6, "do": "unplug", "board": 1},
        {"at": 5, "do": "plug", "board": 1}])"));
    const auto &events = scenario.boards[0].plan.events;
    QCOMPARE(events.size(), std::size_t{5});
    QVERIFY(events[0].what == BoardWhat::Pause && events[0].duration == oneSecond / 4);
    QVERIFY(events[1].what == BoardWhat::Raw && events[1].at == oneSecond);
    QCOMPARE(events[1].bytes, (Report{0x0A, 0xFF, 0x1B}));
    QVERIFY(events[2].what == BoardWhat::Raw);
    QCOMPARE(events[2].bytes, (Report{4, 50, 0xE9, '!'}));
    QVERIFY(events[3].what == BoardWhat::Burst && events[3].amount == 200 && !events[3].kind);
    QVERIFY(events[4].what == BoardWhat::Rate && events[4].amount == 7);
    QCOMPARE(scenario.events.size(), std::size_t{2});
    QVERIFY(scenario.events[0].what == LibraryWhat::Plug && scenario.events[0].at == 5 * oneSecond);
    QVERIFY(scenario.events[1].what == LibraryWhat::Unplug && scenario.events[1].value == 1);
}

void tst_scenarioreader::faultsOfBoards()
{
    const Scenario scenario = scenarioIn(R"({"title": "t", "boards": [{"id": 1}, {"id": 2}], "faults": [
        {"fault": "garbage"}, {"fault": "vanish", "board": 2, "at": 1},
        {"fault": "text-long", "at": 2, "reports": 3}]})");
    const auto &first = scenario.boards[0].plan.events;
    const auto &second = scenario.boards[1].plan.events;
    QCOMPARE(first.size(), std::size_t{2});
    QVERIFY(first[0].what == BoardWhat::Burst && first[0].amount == 650 && *first[0].kind == Kind::Garbage);
    QVERIFY(first[1].amount == 3 && *first[1].kind == Kind::LongText);
    QCOMPARE(second.size(), std::size_t{1});
    QVERIFY(second[0].what == BoardWhat::Vanish && second[0].at == oneSecond);
}

void tst_scenarioreader::faultsOfTheLibrary()
{
    const Scenario scenario = scenarioIn(R"({"title": "t", "boards": [], "faults": [
        {"fault": "enumeration-fails", "index": 3}, {"fault": "lying-count", "by": -1},
        {"fault": "slow-command", "seconds": 0.5}, {"fault": "callback-in-command"},
        {"fault": "plug-storm", "at": 1}]})");
    const auto &events = scenario.events;
    QVERIFY(events[0].what == LibraryWhat::EnumerationFails && events[0].value == 3);
    QVERIFY(events[1].what == LibraryWhat::CountLies && events[1].value == -1);
    QVERIFY(events[2].what == LibraryWhat::SlowCommand && events[2].value == 500);
    QVERIFY(events[3].what == LibraryWhat::CallbackInCommand);
    QCOMPARE(events.size(), std::size_t{4 + 500});
    QVERIFY(events[4].at == oneSecond && events.back().at == oneSecond + std::chrono::milliseconds(499));
}

void tst_scenarioreader::shippedScenarios_data()
{
    QTest::addColumn<QString>("path");
    const QDir shipped(SCENARIO_FOLDER);
    for (const QString &name : shipped.entryList({"*.json"})) {
        if (name != "schema.json")
            QTest::newRow(qPrintable(name)) << shipped.filePath(name);
    }
}

void tst_scenarioreader::shippedScenarios()
{
    QFETCH(QString, path);
    std::string complaint;
    const auto scenario = readScenario(path.toStdString(), complaint);
    QVERIFY2(scenario, complaint.c_str());
    QVERIFY(!scenario->title.empty());
}

// What the library has built in for when it stands alone.
void tst_scenarioreader::theDefaultIsOneBoard()
{
    std::string complaint;
    const auto scenario = readScenario(SCENARIO_FOLDER "/default.json", complaint);
    QVERIFY2(scenario, complaint.c_str());
    QCOMPARE(scenario->boards.size(), std::size_t{1});
    const BoardPlan &plan = scenario->boards[0].plan;
    const BoardPlan usual{1001, 1001};
    QCOMPARE(plan.id, 1001);
    QCOMPARE(plan.seed, 1001U);
    QCOMPARE(plan.rate, usual.rate);
    QCOMPARE(plan.weights, usual.weights);
    QVERIFY(plan.lines && plan.unknowns && !plan.pen.away && plan.pen.points.empty() && plan.events.empty());
    QVERIFY(scenario->events.empty());
}

void tst_scenarioreader::complaints_data()
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
        "unknowns, pen");
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
        "/faults/0/by: the fault vanish has no \"by\"; allowed is none");
    row("fault without a board", R"({"title": "t", "boards": [], "faults": [{"fault": "flood"}]})",
        "/faults/0: the fault flood needs a board; there is none");
    row("twice the same key", R"({"title": "t", "title": "u", "boards": []})",
        "the key \"title\" stands twice in one object; once is allowed");
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

void tst_scenarioreader::complaints()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, line);
    const QString path = written(text);
    std::string complaint;
    QVERIFY(!readScenario(path.toStdString(), complaint));
    QCOMPARE(QByteArray::fromStdString(complaint), path.toLocal8Bit() + ": " + line);
}

void tst_scenarioreader::boundsAreAllowed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("lowest rate") << withBoardKeys(R"("rate": 1)");
    QTest::newRow("highest rate") << withBoardKeys(R"("rate": 10000)");
    QTest::newRow("together 20000") << QByteArray(
        R"({"title": "t", "boards": [{"id": 1, "rate": 10000}, {"id": 2, "rate": 10000}]})");
    QTest::newRow("least id") << QByteArray(R"({"title": "t", "boards": [{"id": -2147483648}]})");
    QTest::newRow("greatest id") << QByteArray(R"({"title": "t", "boards": [{"id": 2147483647}]})");
    QTest::newRow("last day") << withBoard(
        R"("timeline": [{"at": 86400, "do": "burst", "board": 1, "reports": 1}])");
    QTest::newRow("no bytes") << withBoard(R"("timeline": [{"at": 1, "do": "raw", "board": 1, "hex": ""}])");
    QTest::newRow("no lie") << withBoard(R"("faults": [{"fault": "lying-count", "by": 0}])");
}

void tst_scenarioreader::boundsAreAllowed()
{
    QFETCH(QByteArray, text);
    std::string complaint;
    QVERIFY2(readScenario(written(text).toStdString(), complaint), complaint.c_str());
}

void tst_scenarioreader::filesThatAreNone()
{
    std::string complaint;
    const std::string missing = folder.filePath("missing.json").toStdString();
    QVERIFY(!readScenario(missing, complaint));
    QCOMPARE(complaint, missing + ": there is no such file; a scenario file is needed");
    const std::string directory = folder.path().toStdString();
    QVERIFY(!readScenario(directory, complaint));
    QCOMPARE(complaint, directory + ": this is not a file; a scenario file is needed");
    QVERIFY(!readScenario("two\nlines", complaint));
    QCOMPARE(complaint, std::string("two?lines: there is no such file; a scenario file is needed"));
}

void tst_scenarioreader::aFileThatIsTooLarge()
{
    const QString path = written(QByteArray(1024 * 1024 + 1, ' '));
    std::string complaint;
    QVERIFY(!readScenario(path.toStdString(), complaint));
    QCOMPARE(complaint, path.toStdString() + ": the file is too large; allowed are up to 1048576 bytes");
}

// Whatever part of a file is there, it is refused with one line.
void tst_scenarioreader::cutFilesAreRefusedOrWhole()
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
    scenarioIn(whole);
}

QTEST_APPLESS_MAIN(tst_scenarioreader)
#include "tst_scenarioreader.moc"
