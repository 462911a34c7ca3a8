#include <algorithm>
#include <map>
#include <set>

#include "stream.h"
#include "support/tests.h"

using namespace std::chrono_literals;

/// What a board sends within its own time, seen through the tool's rate limit.
class tst_stream : public QObject
{
    Q_OBJECT

private slots:
    void otherBytesFromAnotherSeed();
    void textsAtMostOnceASecond();
    void nothingThatTheBarGraphTakesForAVoltage();
    void everyKindPassesTheRateLimit_data();
    void everyKindPassesTheRateLimit();
    void neighboursDiffer();
    void componentsStayWithinTheBars();
    void componentsFollowThePen();
    void voltagesStayOnTheMeter_data();
    void voltagesStayOnTheMeter();
};

namespace {

constexpr std::chrono::nanoseconds reportPeriod = 10ms;

/// (type, sub-type); the sub-type is 0 for all but SignalReport, and the type for all unknown ones is 0.
using Name = std::pair<int, int>;

Name nameOf(const Report &report)
{
    const int type = report.at(1);
    if (type == 33 || type == 65 || type == 200)
        return {0, 0};
    return {type, type == 47 ? report.at(2) : 0};
}

bool isRateLimited(int type)
{
    return type == 47 || type == 104 || type == 162 || type == 163 || type == 164;
}

constexpr Name completedLine{50, 10};

/// How often each kind passes the tool's intake in so many seconds at 100 reports a second, and how often the
/// Monitor shows a line that ends in a line feed.
std::map<Name, int> passed(Stream &stream, int seconds, int thresholdMs)
{
    std::map<Name, int> counts;
    int lastKeptMs = -1; // none: rate-limited kinds are dropped until the first text
    int lastShownMs = 0;
    for (int ms = 0; ms < seconds * 1000; ms += 10) {
        const Report report = stream.next(reportPeriod);
        const int type = report.at(1);
        if (isRateLimited(type) && (lastKeptMs < 0 || ms - lastKeptMs <= thresholdMs))
            continue;
        if (isRateLimited(type) || type == 50)
            lastKeptMs = ms;
        ++counts[nameOf(report)];
        const bool hasLine = std::find(report.begin() + 2, report.end(), 10) != report.end();
        if (type == 50 && hasLine && ms - lastShownMs > 30)
            ++counts[completedLine];
        lastShownMs = ms;
    }
    return counts;
}

int littleEndian(const Report &report, std::size_t offset)
{
    return static_cast<std::int16_t>(report.at(offset) | report.at(offset + 1) << 8);
}

} // namespace

void tst_stream::otherBytesFromAnotherSeed()
{
    Stream first({1001, 7}), second({1001, 8});
    int equal = 0;
    for (int i = 0; i < 1000; ++i)
        equal += first.next(reportPeriod) == second.next(reportPeriod);
    QVERIFY2(equal < 20, QByteArray::number(equal));
}

void tst_stream::textsAtMostOnceASecond()
{
    Stream stream({1001, 7});
    std::vector<int> textTimes;
    for (int ms = 0; ms < 30000; ms += 10) {
        if (stream.next(reportPeriod).at(1) == 50)
            textTimes.push_back(ms);
    }
    QVERIFY2(textTimes.size() >= 26 && textTimes.size() <= 30,
             QByteArray::number(static_cast<int>(textTimes.size())));
    QCOMPARE(textTimes.front(), 0);
    for (std::size_t i = 1; i < textTimes.size(); ++i)
        QVERIFY(textTimes[i] - textTimes[i - 1] >= 1000);
}

void tst_stream::nothingThatTheBarGraphTakesForAVoltage()
{
    Stream stream({1001, 7});
    stream.command("T");
    int statusTexts = 0;
    for (int i = 0; i < 30000; ++i) {
        const Report report = stream.next(reportPeriod);
        if (report.at(1) != 119)
            continue;
        ++statusTexts;
        QVERIFY(report.at(0) != 52 && report.at(0) != 58);
    }
    QVERIFY(statusTexts > 250);
}

void tst_stream::everyKindPassesTheRateLimit_data()
{
    addColumns<int, int>("seed", "thresholdMs");
    for (int seed = 1; seed <= 20; ++seed)
        QTest::addRow("Monitor, seed %d", seed) << seed << 100;
    addRow("bar graph", 1, 50);
    addRow("the board's own seed", 1001, 100);
}

void tst_stream::everyKindPassesTheRateLimit()
{
    QFETCH(int, seed);
    QFETCH(int, thresholdMs);
    Stream stream({1001, static_cast<std::uint32_t>(seed)});
    const std::map<Name, int> counts = passed(stream, 30, thresholdMs);
    std::set<Name> names;
    for (const auto &[name, count] : counts) {
        names.insert(name);
        // Often enough for some to be lost to the jitter of a busy machine.
        QVERIFY2(count >= 5, qPrintable(QString("%1/%2: %3").arg(name.first).arg(name.second).arg(count)));
    }
    const std::set<Name> expected{{0, 0},  {47, 1},  {47, 2},  {47, 3},  {47, 4},  {47, 5},      {47, 6},
                                  {50, 0}, {104, 0}, {162, 0}, {163, 0}, {164, 0}, completedLine};
    QCOMPARE(names.size(), expected.size());
    QVERIFY(names == expected);
}

void tst_stream::neighboursDiffer()
{
    Stream stream({1001, 7});
    std::map<Name, Report> last;
    std::map<Name, int> repeated;
    for (int i = 0; i < 30000; ++i) {
        const Report report = stream.next(reportPeriod);
        Report &before = last[nameOf(report)];
        repeated[nameOf(report)] += report == before;
        before = report;
    }
    // Of 2500 or more of its kind; only the short identity of a pen is ever the same twice in a row.
    for (const auto &[name, count] : repeated)
        QVERIFY2(count < 150, qPrintable(QString("%1/%2: %3").arg(name.first).arg(name.second).arg(count)));
}

void tst_stream::componentsStayWithinTheBars()
{
    Stream stream({1001, 7});
    int largest = 0;
    for (int i = 0; i < 30000; ++i) {
        const Report report = stream.next(reportPeriod);
        if (nameOf(report) != Name{47, 1})
            continue;
        for (std::size_t offset = 13; offset < 37; offset += 2)
            largest = std::max(largest, std::abs(littleEndian(report, offset)));
        const int frequency = littleEndian(report, 37);
        QVERIFY2(frequency > 0 && frequency <= 8888, QByteArray::number(frequency));
    }
    QVERIFY2(largest > 3000 && largest <= 3500, QByteArray::number(largest));
}

// The coarse dial of x turns once on the width of the board: it tells where the pen is.
void tst_stream::componentsFollowThePen()
{
    Sensor sensor(7);
    for (int tenths = 0; tenths < 500; ++tenths) {
        const Measurement m = sensor.measure(tenths / 10.0);
        const int x = m.xCoarse.c0 + m.xCoarse.c60 / 2 - m.xCoarse.c120 / 2;
        const int y = (m.xCoarse.c60 + m.xCoarse.c120) * 512 / 591;
        double turns = std::atan2(y, x) / 6.283185307179586;
        if (turns < 0)
            turns += 1;
        // The noise of 20 turns the vector, which is no shorter than 1900, by less than 0.005 of a turn.
        QVERIFY2(std::abs(turns * 16000 - m.pen.x) < 0.005 * 16000,
                 qPrintable(QString("%1 s: %2, %3").arg(tenths / 10.0).arg(turns * 16000).arg(m.pen.x)));
    }
}

void tst_stream::voltagesStayOnTheMeter_data()
{
    QTest::addColumn<int>("adcMax");
    addRow("unless told otherwise", 500); // the meter is full at 511
    addRow("beyond the meter", 1023);
    addRow("always the same", 100);
}

void tst_stream::voltagesStayOnTheMeter()
{
    QFETCH(int, adcMax);
    BoardPlan plan{1001, 7};
    if (adcMax != 500)
        plan.adcMax = adcMax;
    Stream stream(plan);
    for (int i = 0; i < 1000; ++i)
        QVERIFY(stream.next(reportPeriod).at(1) != 119); // none before the command
    stream.command("V\r");
    std::vector<int> readings;
    for (int i = 0; i < 30000; ++i) {
        const Report report = stream.next(reportPeriod);
        if (report.at(1) != 119)
            continue;
        QCOMPARE(report.size(), std::size_t{52});
        QCOMPARE(static_cast<int>(report.at(0)), 52);
        QCOMPARE(static_cast<int>(report.at(2)), 12);
        readings.push_back(littleEndian(report, 3));
    }
    QCOMPARE(readings.size(), std::size_t{1200}); // four a second
    QCOMPARE(*std::min_element(readings.begin(), readings.end()), 100);
    QCOMPARE(*std::max_element(readings.begin(), readings.end()), adcMax);
}

PADSCOPE_TESTS(tst_stream);
#include "tst_stream.moc"
