#include "scenarioreader.h"
#include "support/tests.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// What is read from scenario files.
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

private:
    QString written(const QByteArray &text) const;
    Scenario scenarioIn(const QByteArray &text) const;

    QTemporaryDir folder;
};

namespace {

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
         "unknowns": false, "adcMax": 1023, "kinds": {"phase": 3, "garbage": 100, "adc": 0},
         "pen": [{"seconds": 0.5, "x": 16000, "y": 12000, "touches": true}]}, {"id": 7, "pen": "away"}]})");
    QCOMPARE(scenario.boards.size(), std::size_t{2});
    const BoardPlan &plan = scenario.boards[0];
    QCOMPARE(plan.id, std::numeric_limits<int>::min());
    QCOMPARE(plan.rate, 10000);
    QCOMPARE(plan.seed, 4294967295U);
    QVERIFY(!scenario.boards[0].plugged);
    QVERIFY(!plan.lines);
    QVERIFY(!plan.unknowns);
    QCOMPARE(plan.adcMax, 1023);
    QCOMPARE(plan.weights[indexOf(Kind::Phase)], 3);
    QCOMPARE(plan.weights[indexOf(Kind::Garbage)], 100);
    QCOMPARE(plan.weights[indexOf(Kind::Signal1)], 0);
    QCOMPARE(plan.pen.points.size(), std::size_t{1});
    QCOMPARE(plan.pen.points[0].x, 16000.0);
    QVERIFY(plan.pen.points[0].touches);

    const BoardPlan &usual = scenario.boards[1];
    QCOMPARE(usual.rate, 100);
    QVERIFY(scenario.boards[1].plugged);
    QVERIFY(usual.lines);
    QVERIFY(usual.pen.away);
    QCOMPARE(usual.adcMax, 500);
    QCOMPARE(usual.weights[indexOf(Kind::Signal1)], 5);
    QCOMPARE(usual.weights[indexOf(Kind::Adc)], 0);
}

void tst_scenarioreader::seedsOfBoards()
{
    const Scenario scenario = scenarioIn(
        R"({"title": "t", "seed": 10, "boards": [{"id": 5}, {"id": 5}, {"id": 5, "seed": 3}, {"id": -1}]})");
    QCOMPARE(scenario.boards[0].seed, 15U);
    QVERIFY(scenario.boards[1].seed != 15U);
    QCOMPARE(scenario.boards[2].seed, 3U);
    QCOMPARE(scenario.boards[3].seed, 9U);
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
    const auto &events = scenario.boards[0].events;
    QCOMPARE(events.size(), std::size_t{5});
    QVERIFY(std::get<Pause>(events[0].what).duration == oneSecond / 4);
    QVERIFY(events[1].at == oneSecond);
    QCOMPARE(std::get<Raw>(events[1].what).bytes, (Report{0x0A, 0xFF, 0x1B}));
    QCOMPARE(std::get<Raw>(events[2].what).bytes, (Report{4, 50, 0xE9, '!'}));
    QCOMPARE(std::get<Burst>(events[3].what).reports, 200);
    QVERIFY(!std::get<Burst>(events[3].what).kind);
    QCOMPARE(std::get<Rate>(events[4].what).perSecond, 7);
    QCOMPARE(scenario.events.size(), std::size_t{2});
    QVERIFY(scenario.events[0].what == LibraryWhat::Plug && scenario.events[0].at == 5 * oneSecond);
    QVERIFY(scenario.events[1].what == LibraryWhat::Unplug && scenario.events[1].value == 1);
}

void tst_scenarioreader::faultsOfBoards()
{
    const Scenario scenario = scenarioIn(R"({"title": "t", "boards": [{"id": 1}, {"id": 2}], "faults": [
        {"fault": "garbage"}, {"fault": "vanish", "board": 2, "at": 1},
        {"fault": "text-long", "at": 2, "reports": 3}]})");
    const auto &first = scenario.boards[0].events;
    const auto &second = scenario.boards[1].events;
    QCOMPARE(first.size(), std::size_t{2});
    QCOMPARE(std::get<Burst>(first[0].what).reports, 650);
    QVERIFY(std::get<Burst>(first[0].what).kind == Kind::Garbage);
    QCOMPARE(std::get<Burst>(first[1].what).reports, 3);
    QVERIFY(std::get<Burst>(first[1].what).kind == Kind::LongText);
    QCOMPARE(second.size(), std::size_t{1});
    QVERIFY(std::holds_alternative<Vanish>(second[0].what) && second[0].at == oneSecond);
}

void tst_scenarioreader::faultsOfTheLibrary()
{
    const Scenario scenario = scenarioIn(R"({"title": "t", "boards": [], "faults": [
        {"fault": "enumeration-fails", "index": 3}, {"fault": "lying-count", "by": -1},
        {"fault": "slow-command", "seconds": 0.5}, {"fault": "callback-in-command"},
        {"fault": "plug-storm", "at": 1}]})");
    const auto &events = scenario.events;
    StandingFaults standing;
    for (std::size_t i = 0; i < 4; ++i)
        events[i].change(standing);
    QVERIFY(standing.failingIndexes == std::set<int>{3});
    QCOMPARE(standing.countLie, -1);
    QCOMPARE(standing.commandDelayMs, 500);
    QVERIFY(standing.callbackInCommand);
    QCOMPARE(events.size(), std::size_t{4 + 500});
    QVERIFY(events[4].at == oneSecond && events.back().at == oneSecond + std::chrono::milliseconds(499));
}

void tst_scenarioreader::shippedScenarios_data()
{
    QTest::addColumn<QString>("path");
    const QDir shipped(SCENARIO_FOLDER);
    for (const QString &name : shipped.entryList({"*.json"})) {
        if (name != "schema.json")
            addRow(qPrintable(name), shipped.filePath(name));
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
    const BoardPlan &plan = scenario->boards[0];
    const BoardPlan usual{1001, 1001};
    QCOMPARE(plan.id, 1001);
    QCOMPARE(plan.seed, 1001U);
    QCOMPARE(plan.rate, usual.rate);
    QCOMPARE(plan.weights, usual.weights);
    QVERIFY(plan.lines && plan.unknowns && !plan.pen.away && plan.pen.points.empty() && plan.events.empty());
    QVERIFY(scenario->events.empty());
}

PADSCOPE_TESTS(tst_scenarioreader);
#include "tst_scenarioreader.moc"
