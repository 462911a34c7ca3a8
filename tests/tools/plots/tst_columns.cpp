#include <cmath>
#include <random>

#include "columns.h"
#include "support/tests.h"

using plots::Columns;
using plots::Line;

namespace {

constexpr int width = 50;
constexpr double seconds = 10;

/// What a polyline covers of each column of pixels, the crossings of its borders included.
struct Cover
{
    double lowest[width];
    double highest[width];
};

void cover(Cover &covered, int column, double value)
{
    if (column < 0 || column >= width)
        return;
    covered.lowest[column] = qMin(covered.lowest[column], value);
    covered.highest[column] = qMax(covered.highest[column], value);
}

Cover coverOf(const Line &line)
{
    Cover covered;
    std::fill_n(covered.lowest, width, 1e9);
    std::fill_n(covered.highest, width, -1e9);
    const double perColumn = seconds / width;
    const auto columnOf = [&](double x) { return qMin(int(std::floor(x / perColumn)), width - 1); };
    for (int i = 0; i < line.size(); ++i) {
        cover(covered, columnOf(line[i].x()), line[i].y());
        if (i == 0)
            continue;
        const QPointF &from = line[i - 1], &to = line[i];
        for (int border = columnOf(from.x()) + 1; border <= columnOf(to.x()); ++border) {
            const double share = (border * perColumn - from.x()) / (to.x() - from.x());
            const double value = from.y() + share * (to.y() - from.y());
            cover(covered, border - 1, value);
            cover(covered, border, value);
        }
    }
    return covered;
}

Line randomSeries(unsigned seed, int count)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> times(0, seconds);
    std::vector<double> sorted;
    std::generate_n(std::back_inserter(sorted), count, [&] { return times(random); });
    std::sort(sorted.begin(), sorted.end());
    std::uniform_int_distribution<int> values(-32768, 32767);
    Line line;
    for (const double time : sorted)
        line.append({time, double(values(random))});
    return line;
}

} // namespace

/// Decimation of curves over time.
class ColumnsTests : public QObject
{
    Q_OBJECT

private slots:
    void coversWhatAllSamplesCover_data();
    void coversWhatAllSamplesCover();
    void keepsFourOfAColumn();
    void keepsAPeakOfOneSample();
    void breaksAtGaps();
    void breaksNowhereWithinColumnsWidth();
    void samplesBeyondTheSpan();
    void aSpanOfNoLength();
    void empty();
};

void ColumnsTests::coversWhatAllSamplesCover_data()
{
    addColumns<unsigned, int>("seed", "count");
    addRow("few", 1u, 20);
    addRow("one a column", 2u, 50);
    addRow("some a column", 3u, 500);
    addRow("many a column", 4u, 50'000);
}

/// A line through the decimated samples beside one through all: the same in each column.
void ColumnsTests::coversWhatAllSamplesCover()
{
    QFETCH(unsigned, seed);
    QFETCH(int, count);
    const Line all = randomSeries(seed, count);
    Columns columns({0, seconds}, width);
    for (const QPointF &sample : all)
        columns.add(sample.x(), sample.y());
    const std::vector<Line> lines = columns.lines(plots::unbroken);
    QCOMPARE(lines.size(), std::size_t(1));
    QVERIFY(lines[0].size() <= 4 * width);
    const Cover expected = coverOf(all);
    const Cover covered = coverOf(lines[0]);
    for (int i = 0; i < width; ++i) {
        QCOMPARE(covered.lowest[i], expected.lowest[i]);
        QCOMPARE(covered.highest[i], expected.highest[i]);
    }
}

void ColumnsTests::keepsFourOfAColumn()
{
    Columns columns({0, 10}, 10);
    const double values[] = {3, 4, 9, 5, 1, 2};
    for (int i = 0; i < 6; ++i)
        columns.add(2 + i * 0.125, values[i]);
    const std::vector<Line> lines = columns.lines();
    QCOMPARE(lines.size(), std::size_t(1));
    QCOMPARE(lines[0], (Line{{2, 3}, {2.25, 9}, {2.5, 1}, {2.625, 2}}));
}

/// Among a hundred thousand.
void ColumnsTests::keepsAPeakOfOneSample()
{
    Columns columns({0, 1000}, 100);
    for (int i = 0; i < 100'000; ++i)
        columns.add(i / 100.0, i == 54'321 ? 32767 : 5);
    const std::vector<Line> lines = columns.lines();
    QVERIFY(lines[0].contains({543.21, 32767}));
}

void ColumnsTests::breaksAtGaps()
{
    Columns columns({0, 10}, 100);
    for (const double time : {1.0, 2.0, 3.5, 5.0, 5.5})
        columns.add(time, 7);
    const std::vector<Line> expected{{{1, 7}, {2, 7}}, {{3.5, 7}}, {{5, 7}, {5.5, 7}}};
    QCOMPARE(columns.lines(), expected);
    QCOMPARE(columns.lines(plots::unbroken).size(), std::size_t(1));
}

/// A gap that is narrower than a pixel is none to see.
void ColumnsTests::breaksNowhereWithinColumnsWidth()
{
    Columns columns({0, 1000}, 100);
    for (int i = 0; i < 200; ++i)
        columns.add(i * 5, i);
    QCOMPARE(columns.lines().size(), std::size_t(1));
}

void ColumnsTests::samplesBeyondTheSpan()
{
    Columns columns({0, 10}, 10);
    columns.add(-5, 1);
    columns.add(10, 2);
    columns.add(1e300, 3);
    QCOMPARE(columns.lines(plots::unbroken), (std::vector<Line>{{{-5, 1}, {10, 2}, {1e300, 3}}}));
}

void ColumnsTests::aSpanOfNoLength()
{
    Columns columns({4, 4}, 10);
    columns.add(4, 1);
    columns.add(4, 2);
    QCOMPARE(columns.lines(), (std::vector<Line>{{{4, 1}, {4, 2}}}));
}

void ColumnsTests::empty()
{
    QVERIFY(Columns({0, 10}, 10).lines().empty());
}

PADSCOPE_TESTS(ColumnsTests);
#include "tst_columns.moc"
