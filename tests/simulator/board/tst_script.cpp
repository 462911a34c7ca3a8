#include <algorithm>
#include <map>
#include <set>

#include "reporttext.h"
#include "scenarioreader.h"
#include "script.h"
#include "support/tests.h"

using namespace std::chrono_literals;

/// What happens to a board in its own time.
class tst_script : public QObject
{
    Q_OBJECT

private slots:
    void sameStepsFromTheSamePlan_data();
    void sameStepsFromTheSamePlan();
    void theRateIsTheWait();
    void eventsOfThePlan_data();
    void eventsOfThePlan();
    void rawBytesAsTheyStand();
    void aBoardVanishesInMidReport();
    void eventsFromOutside();
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

std::size_t countBetween(const std::vector<Sent> &sent, int fromMs, int toMs)
{
    const auto isIn = [&](const Sent &one) { return one.at >= fromMs * 1ms && one.at < toMs * 1ms; };
    return static_cast<std::size_t>(std::count_if(sent.begin(), sent.end(), isIn));
}

BoardPlan planWith(const std::vector<BoardEvent> &events)
{
    BoardPlan plan{1001, 7};
    plan.events = events;
    return plan;
}

} // namespace

Q_DECLARE_METATYPE(std::vector<BoardEvent>)

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

void tst_script::eventsOfThePlan_data()
{
    using Events = std::vector<BoardEvent>;
    addColumns<Events, QString>("events", "counts"); // from and to in milliseconds, and the reports between
    // The greeting comes with the first report: 101 in the first second.
    addRow("none", Events{}, QString("0 1000 101, 1000 2000 100"));
    addRow("a burst comes at once", Events{{1s, Burst{50}}},
           QString("0 1000 101, 1000 1010 51, 2000 3000 100"));
    addRow("a pause is silence", Events{{1s, Pause{1500ms}}},
           QString("0 1000 101, 1010 2500 0, 3000 4000 100"));
    addRow("rates change, and then are as planned", Events{{1s, Rate{1000}}, {2s, Rate{0}}},
           QString("0 1000 101, 1010 2000 990, 3000 4000 100"));
    addRow("bytes take nobody's place", Events{{1s, Raw{{9, 8, 7}}}}, QString("0 1000 101, 0 2000 202"));
}

void tst_script::eventsOfThePlan()
{
    QFETCH(std::vector<BoardEvent>, events);
    QFETCH(QString, counts);
    Script script(planWith(events));
    const auto sent = sentIn(script, 4s);
    for (const QString &count : counts.split(", ")) {
        const QStringList numbers = count.split(' ');
        QCOMPARE(countBetween(sent, numbers[0].toInt(), numbers[1].toInt()), numbers[2].toULong());
    }
}

void tst_script::rawBytesAsTheyStand()
{
    Script script(planWith({{1s, Raw{{9, 8, 7}}}}));
    const auto sent = sentIn(script, 1020ms);
    const auto isIt = [](const Sent &one) { return one.at >= 1s && one.bytes == Report{9, 8, 7}; };
    QVERIFY(std::any_of(sent.begin(), sent.end(), isIt));
}

void tst_script::aBoardVanishesInMidReport()
{
    Script script(planWith({{1s, Vanish{}}}));
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
    QVERIFY(countBetween(sent, 0, 1) >= 10);
    QCOMPARE(countBetween(sent, 1010, 2000), std::size_t{0});
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
