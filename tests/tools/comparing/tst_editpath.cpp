#include <random>

#include "editpath.h"
#include "support/tests.h"

using comparing::EditPath;

namespace {

/// How many must be removed and added, by the table of all pairs of beginnings.
template <typename Equal>
std::size_t fewestEdits(std::size_t lengthA, std::size_t lengthB, Equal areEqual)
{
    std::vector<std::vector<std::size_t>> common(lengthA + 1, std::vector<std::size_t>(lengthB + 1));
    for (std::size_t a = 1; a <= lengthA; ++a) {
        for (std::size_t b = 1; b <= lengthB; ++b)
            common[a][b] = std::max({common[a - 1][b], common[a][b - 1],
                                     common[a - 1][b - 1] + (areEqual(a - 1, b - 1) ? 1 : 0)});
    }
    return lengthA + lengthB - 2 * common[lengthA][lengthB];
}

std::vector<int> randomNumbers(std::mt19937 &random, std::size_t count, int different)
{
    std::vector<int> numbers(count);
    for (int &number : numbers)
        number = std::uniform_int_distribution(0, different - 1)(random);
    return numbers;
}

/// Some are removed, added or changed.
std::vector<int> edited(std::mt19937 &random, const std::vector<int> &numbers, int different, int percent)
{
    const auto draw = [&random](int count) { return std::uniform_int_distribution(0, count - 1)(random); };
    std::vector<int> result;
    for (const int number : numbers) {
        const int kind = draw(100) < percent ? draw(3) : 3;
        if (kind != 0)
            result.push_back(kind == 1 ? draw(different) : number);
        if (kind == 2)
            result.push_back(draw(different));
    }
    return result;
}

} // namespace

class EditPathTests : public QObject
{
    Q_OBJECT

private slots:
    void isAsShortAsTheTableSays_data();
    void isAsShortAsTheTableSays();
    void leadsFurthestWithTooManyEdits();
};

void EditPathTests::isAsShortAsTheTableSays_data()
{
    addColumns<int, int, int>("different", "percent", "tolerance");
    addRow("many values, few edits", 1000, 5, 0);
    addRow("many values, many edits", 1000, 60, 0);
    addRow("two values", 2, 30, 0);
    addRow("one value", 1, 30, 0);
    addRow("neighbours are equal", 20, 30, 1);
    addRow("neighbours are equal, few edits", 200, 5, 3);
}

void EditPathTests::isAsShortAsTheTableSays()
{
    QFETCH(int, different);
    QFETCH(int, percent);
    QFETCH(int, tolerance);
    std::mt19937 random(1);
    for (std::size_t length = 0; length < 60; ++length) {
        const std::vector<int> a = randomNumbers(random, length, different);
        const std::vector<int> b = edited(random, a, different, percent);
        const auto areEqual = [&, tolerance = tolerance](std::size_t i, std::size_t j) {
            return std::abs(a[i] - b[j]) <= tolerance;
        };
        const EditPath path = comparing::shortestPath(a.size(), b.size(), areEqual, a.size() + b.size());
        QVERIFY(path.reachesGoal);
        QCOMPARE(path.a, a.size());
        QCOMPARE(path.b, b.size());
        QCOMPARE(path.edits, fewestEdits(a.size(), b.size(), areEqual));
    }
}

void EditPathTests::leadsFurthestWithTooManyEdits()
{
    const std::string a = "abcd1234";
    const std::string b = "abcd5678";
    const auto areEqual = [&](std::size_t i, std::size_t j) { return a[i] == b[j]; };
    const EditPath path = comparing::shortestPath(8, 8, areEqual, 2);
    QVERIFY(!path.reachesGoal);
    QCOMPARE(path.edits, std::size_t{2});
    QCOMPARE(path.matches(), std::size_t{4});
    QCOMPARE(path.a + path.b, std::size_t{10});
}

PADSCOPE_TESTS(EditPathTests);
#include "tst_editpath.moc"
