#include <limits>
#include <numeric>

#include "spread.h"
#include "support/tests.h"

using Durations = std::vector<std::int64_t>;

/// Median and 99th percentile by nearest rank.
class SpreadTests : public QObject
{
    Q_OBJECT

private slots:
    void none();
    void ranks_data();
    void ranks();
    void differences();
};

namespace {

/// 1 to n, the last ones first.
Durations upTo(int n)
{
    Durations values(std::size_t(n), 0);
    std::iota(values.rbegin(), values.rend(), 1);
    return values;
}

} // namespace

void SpreadTests::none()
{
    Durations durations;
    const statistics::Spread spread = statistics::spreadOf(durations);
    QCOMPARE(spread.count, 0U);
    QCOMPARE(spread.minNs, 0);
    QCOMPARE(spread.medianNs, 0);
    QCOMPARE(spread.p99Ns, 0);
    QCOMPARE(spread.maxNs, 0);
}

void SpreadTests::ranks_data()
{
    addColumns<Durations, int, int, int, int>("durations", "min", "median", "p99", "max");
    addRow("one", Durations{7}, 7, 7, 7, 7);
    addRow("two", Durations{9, 4}, 4, 4, 9, 9);
    addRow("three", Durations{9, 4, 5}, 4, 5, 9, 9);
    addRow("negative", Durations{3, -8, 1}, -8, 1, 3, 3);
    addRow("99", upTo(99), 1, 50, 99, 99); // 49.5 and 98.01, rounded up
    addRow("100", upTo(100), 1, 50, 99, 100);
    addRow("101", upTo(101), 1, 51, 100, 101); // 50.5 and 99.99
    addRow("1000", upTo(1000), 1, 500, 990, 1000);
}

void SpreadTests::ranks()
{
    QFETCH(Durations, durations);
    const statistics::Spread spread = statistics::spreadOf(durations);
    QCOMPARE(spread.count, durations.size());
    QTEST(int(spread.minNs), "min");
    QTEST(int(spread.medianNs), "median");
    QTEST(int(spread.p99Ns), "p99");
    QTEST(int(spread.maxNs), "max");
}

void SpreadTests::differences()
{
    constexpr auto max = std::numeric_limits<std::int64_t>::max();
    constexpr auto min = std::numeric_limits<std::int64_t>::min();
    Durations durations{10, 12, 7, max, min};
    statistics::subtract(durations, 10);
    QCOMPARE(durations, (Durations{0, 2, 3, max - 10, max}));
}

Q_DECLARE_METATYPE(Durations)

PADSCOPE_TESTS(SpreadTests);
#include "tst_spread.moc"
