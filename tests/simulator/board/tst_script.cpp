#include "scenarioreader.h"
#include "script.h"
#include "support/tests.h"

#include <algorithm>
#include <map>
#include <set>

using namespace std::chrono_literals;

/// What happens to a board in its own time.
class tst_script : public QObject
{
    Q_OBJECT

private slots:
    void sameStepsFromTheSamePlan_data();
    void sameStepsFromTheSamePlan();
    void theRateIsTheWait();
    void aBurstComesAtOnce();
    void aPauseIsSilence();
    void rawBytesAsTheyStand();
    void ratesChange();
    void aBoardVanishesInMidReport();
    void eventsFromOutside();
    void garbageOfEveryLength();
    void allTypesInTurn();
    void oddTexts();
    void aStoppedBoardOnlyAnswers();
    void thePenFollowsItsPath();
    void allKindsUseEveryField();
};

namespace {

Scenario shipped(const char *name)
{
    std::string complaint;
    const auto scenario = readScenario(std::string(SCENARIO_FOLDER "/") + name + ".json", complaint);
    if (!scenario)
        qFatal("%s", complaint.c_str());
    return *scenario;
}

struct Sent
{
    std::chrono::nanoseconds at{0};
    Report bytes;
};

/// What is sent in so much time.
std::vector<Sent> sentIn(Script &script, std::chrono::nanoseconds length)
{
    std::vector<Sent> sent;
    for (std::chrono::nanoseconds now{0}; now < length;) {
        const Script::Step step = script.next();
        if (step.report)
            sent.push_back({now, *step.report});
        now += step.wait;
    }
    return sent;
}

std::size_t countBetween(const std::vector<Sent> &sent, std::chrono::nanoseconds from,
                         std::chrono::nanoseconds to)
{
    return static_cast<std::size_t>(std::count_if(
        sent.begin(), sent.end(), [&](const Sent &one) { return one.at >= from && one.at < to; }));
}

BoardPlan planWith(BoardEvent event)
{
    BoardPlan plan{1001, 7};
    plan.events.push_back(std::move(event));
    return plan;
}

BoardPlan planOf(Kind kind)
{
    BoardPlan plan{1001, 7};
    plan.weights = {};
    plan.weights[static_cast<std::size_t>(kind)] = 1;
    plan.lines = false;
    plan.unknowns = false;
    return plan;
}

std::string textOf(const Report &report)
{
    return {report.begin() + 2, report.end()};
}

} // namespace

void tst_script::sameStepsFromTheSamePlan_data()
{
    QTest::addColumn<QByteArray>("scenario");
    for (const char *name : {"default", "all-kinds", "timeline", "vanish", "garbage", "all-types", "flood",
                             "text-endless", "two-pens"})
        addRow(name, QByteArray(name));
}

void tst_script::sameStepsFromTheSamePlan()
{
    QFETCH(QByteArray, scenario);
    // Read twice: an event of a plan happens once.
    const Scenario one = shipped(scenario.constData());
    const Scenario other = shipped(scenario.constData());
    for (std::size_t board = 0; board < one.boards.size(); ++board) {
        Script first(one.boards[board]), second(other.boards[board]);
        for (int i = 0; i < 3000; ++i) {
            if (i == 1000) {
                first.command("VT>");
                second.command("VT>");
            }
            const Script::Step a = first.next();
            const Script::Step b = second.next();
            QVERIFY(a.report == b.report && a.wait == b.wait && a.vanishes == b.vanishes);
        }
    }
}

void tst_script::theRateIsTheWait()
{
    BoardPlan plan{1001, 7};
    plan.rate = 4000;
    Script script(plan);
    QVERIFY(script.next().wait == 0us); // the greeting
    QVERIFY(script.next().wait == 250us);
    QCOMPARE(sentIn(script, 1s).size(), std::size_t{4000});
}

void tst_script::aBurstComesAtOnce()
{
    Script script(planWith({1s, Burst{50}}));
    const auto sent = sentIn(script, 3s);
    QCOMPARE(countBetween(sent, 0s, 1s), std::size_t{101}); // with the greeting
    QCOMPARE(countBetween(sent, 1s, 1010ms), std::size_t{51});
    QCOMPARE(countBetween(sent, 2s, 3s), std::size_t{100});
}

void tst_script::aPauseIsSilence()
{
    Script script(planWith({1s, Pause{1500ms}}));
    const auto sent = sentIn(script, 4s);
    QCOMPARE(countBetween(sent, 0s, 1s), std::size_t{101}); // with the greeting
    QCOMPARE(countBetween(sent, 1010ms, 2500ms), std::size_t{0});
    QCOMPARE(countBetween(sent, 3s, 4s), std::size_t{100});
}

void tst_script::rawBytesAsTheyStand()
{
    Script script(planWith({1s, Raw{{9, 8, 7}}}));
    const auto sent = sentIn(script, 2s);
    const auto match = std::find_if(sent.begin(), sent.end(), [](const Sent &one) {
        return one.bytes == Report{9, 8, 7};
    });
    QVERIFY(match != sent.end());
    QVERIFY(match->at >= 1s && match->at <= 1010ms);
    QCOMPARE(sent.size(), std::size_t{202}); // it takes nobody's place
}

void tst_script::ratesChange()
{
    BoardPlan plan = planWith({1s, Rate{1000}});
    plan.events.push_back({2s, Rate{0}}); // as planned
    Script script(plan);
    const auto sent = sentIn(script, 4s);
    QCOMPARE(countBetween(sent, 0s, 1s), std::size_t{101}); // with the greeting
    QCOMPARE(countBetween(sent, 1010ms, 2000ms), std::size_t{990});
    QCOMPARE(countBetween(sent, 3s, 4s), std::size_t{100});
}

void tst_script::aBoardVanishesInMidReport()
{
    Script script(planWith({1s, Vanish{}}));
    Script::Step step;
    int reports = 0;
    do {
        step = script.next();
        ++reports;
    } while (!step.vanishes);
    QCOMPARE(reports, 102); // the greeting takes no time
    QCOMPARE(step.report->size(), std::size_t{20});
    QCOMPARE(static_cast<int>(step.report->front()), 40); // it was to have been longer
}

void tst_script::eventsFromOutside()
{
    Script script({1001, 7});
    sentIn(script, 1s);
    script.add({1s, Pause{1s}}); // from now
    script.add({{}, Burst{10}});
    const auto sent = sentIn(script, 3s);
    QVERIFY(countBetween(sent, 0s, 1ns) >= 10);
    QCOMPARE(countBetween(sent, 1010ms, 2000ms), std::size_t{0});
}

void tst_script::garbageOfEveryLength()
{
    Script script(planOf(Kind::Garbage));
    std::map<std::size_t, int> lengths;
    std::set<int> values;
    for (int i = 0; i < 130; ++i) {
        const Report report = *script.next().report;
        ++lengths[report.size()];
        values.insert(report.begin(), report.end());
    }
    QCOMPARE(lengths.size(), std::size_t{65});
    QCOMPARE(lengths.begin()->first, std::size_t{0});
    QCOMPARE(lengths.rbegin()->first, std::size_t{64});
    for (const auto &[length, count] : lengths)
        QCOMPARE(count, 2);
    QVERIFY(values.size() > 250);
}

void tst_script::allTypesInTurn()
{
    Script script(planOf(Kind::AllTypes));
    for (int type = 0; type < 300; ++type)
        QCOMPARE(static_cast<int>(script.next().report->at(1)), type % 256);
}

void tst_script::oddTexts()
{
    Script endless(planOf(Kind::EndlessText)), large(planOf(Kind::LongText)),
        markup(planOf(Kind::MarkupText)), everyByte(planOf(Kind::EveryByteText));
    for (int i = 0; i < 100; ++i) {
        const Report report = *endless.next().report;
        QCOMPARE(static_cast<int>(report.at(1)), 50);
        QVERIFY(report.size() > 2);
        QCOMPARE(textOf(report).find_first_of("!\n"), std::string::npos);
    }
    const std::string line = textOf(*large.next().report);
    QCOMPARE(line.size(), std::size_t{10000});
    QCOMPARE(line.find('\n'), std::size_t{9999});
    QVERIFY(textOf(*markup.next().report).find("<b>bold</b>") == 0);
    const std::string all = textOf(*everyByte.next().report);
    QCOMPARE(std::set<char>(all.begin(), all.end()).size(), std::size_t{256});
}

void tst_script::aStoppedBoardOnlyAnswers()
{
    Script script({1001, 7});
    sentIn(script, 1s);
    script.command(".?");
    std::vector<std::string> texts;
    std::chrono::nanoseconds waited{0};
    while (script.active()) {
        const Script::Step step = script.next();
        waited += step.wait;
        if (step.report)
            texts.push_back(textOf(*step.report));
    }
    QCOMPARE(texts.size(), std::size_t{2});
    QCOMPARE(texts[0], std::string("[.] streaming stopped!"));
    QCOMPARE(texts[1].substr(0, 13), std::string("[?] commands:"));
    QVERIFY(waited == 1200ms);
    script.command("B");
    QVERIFY(sentIn(script, 1s).size() > 90);
}

void tst_script::thePenFollowsItsPath()
{
    PenPath path;
    path.points = {{2, 0, 0, true}, {1, 1000, 600, false}};
    const auto pen = [&path](double seconds) { return firstPen(path, seconds); };
    QCOMPARE(pen(0).x, 0.0);
    QCOMPARE(pen(0.5).x, 250.0);
    QCOMPARE(pen(1).y, 300.0);
    QVERIFY(pen(1).touches);
    QCOMPARE(pen(2.5).x, 500.0); // and back
    QVERIFY(!pen(2.5).touches);
    QCOMPARE(pen(3.5).x, 250.0); // over again
    path.away = true;
    QCOMPARE(pen(1).strength, 0.0);
}

// Each layout's fields, told by number from the tables of the formats: seen here is whether any report of the
// kind has them other than zero.
void tst_script::allKindsUseEveryField()
{
    Script script(shipped("all-kinds").boards.front());
    std::map<std::string, std::set<std::string>> used;
    std::set<int> types;
    for (const Sent &one : sentIn(script, 30s)) {
        types.insert(one.bytes[1]);
        for (const reports::Layout *each : reports::layouts) {
            const reports::Layout &layout = *each;
            if (layout.type != one.bytes[1] || (layout.subType && layout.subType != one.bytes[2]) ||
                layout.sentLength != one.bytes[0])
                continue;
            for (std::size_t i = 0; i < layout.fieldCount; ++i) {
                if (reports::read(layout.fields[i], {one.bytes.data(), one.bytes.size()}) != 0)
                    used[layout.report + std::to_string(layout.subType)].insert(layout.fields[i].name);
            }
        }
    }
    std::map<std::string, std::size_t> counts;
    for (const auto &[report, fields] : used)
        counts[report] = fields.size();
    const std::map<std::string, std::size_t> expected{
        {"SignalReport1", 15}, {"SignalReport2", 7}, {"SignalReport3", 5},    {"SignalReport4", 4},
        {"SignalReport5", 7},  {"SignalReport6", 9}, {"PhaseReport0", 21},    {"PenIdentityReport0", 3},
        {"DualPenReport0", 7}, {"AdcReport12", 2},   {"PositionReport0", 12},
    };
    QCOMPARE(counts, expected);
    for (const int type : {47, 50, 104, 119, 162, 163, 164})
        QVERIFY2(types.count(type), QByteArray::number(type));
    QVERIFY(types.count(33) || types.count(65) || types.count(200));
}

PADSCOPE_TESTS(tst_script);
#include "tst_script.moc"
