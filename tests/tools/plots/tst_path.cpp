#include <cmath>
#include <random>
#include <set>

#include "path.h"
#include "support/tests.h"

using plots::Line;
using plots::Path;

/// A pen's way on a grid of cells.
class PathTests : public QObject
{
    Q_OBJECT

private slots:
    void joinsPositions();
    void wayTwiceIsKeptOnce();
    void liftedPen();
    void aSinglePosition();
    void endlessWaysGrowNoFurther();
    void noPositionIsFarFromALine();
    void positionsBeyondTheRange();
};

/// Cells of 1; their centres are drawn.
void PathTests::joinsPositions()
{
    Path path({0, 0, 10, 10}, 10);
    path.add(0.0, {1, 1});
    path.add(0.1, {1.25, 1.5}); // the same cell
    path.add(0.2, {5, 1});
    path.add(0.3, {5, 9});
    QCOMPARE(path.lines(), (std::vector<Line>{{{1.5, 1.5}, {5.5, 1.5}, {5.5, 9.5}}}));
}

void PathTests::wayTwiceIsKeptOnce()
{
    Path path({0, 0, 10, 10}, 10);
    const QPointF corners[] = {{1, 1}, {8, 1}, {8, 8}};
    for (int i = 0; i < 300; ++i)
        path.add(i * 0.01, corners[i % 3]);
    QCOMPARE(path.lines(), (std::vector<Line>{{{1.5, 1.5}, {8.5, 1.5}, {8.5, 8.5}, {1.5, 1.5}}}));
}

void PathTests::liftedPen()
{
    Path path({0, 0, 10, 10}, 10);
    path.add(0, {1, 1});
    path.add(1, {2, 1}); // a second is no gap yet
    path.add(2.001, {8, 8});
    QCOMPARE(path.lines(), (std::vector<Line>{{{1.5, 1.5}, {2.5, 1.5}}, {{8.5, 8.5}}}));
}

void PathTests::aSinglePosition()
{
    Path path({3, 4, 0, 0}, 10);
    path.add(0, {3, 4});
    QCOMPARE(path.lines(), (std::vector<Line>{{{3.5, 4.5}}}));
}

void PathTests::endlessWaysGrowNoFurther()
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(0, 1000);
    Path path({0, 0, 1000, 1000}, 1600);
    for (int i = 0; i < 200'000; ++i)
        path.add(i * 0.01, {place(random), place(random)});
    std::size_t points = 0;
    for (const Line &line : path.lines())
        points += std::size_t(line.size());
    QVERIFY(points <= 2 * Path::maxSteps);
    QVERIFY(path.cellWidth() > 1000.0 / 1600);
}

/// Each position lies in the cell of a point that is drawn, also when cells have grown.
void PathTests::noPositionIsFarFromALine()
{
    std::mt19937 random(8);
    std::uniform_int_distribution<int> step(-3, 3);
    Path path({0, 0, 1600, 1600}, 1600);
    std::vector<QPointF> positions;
    QPointF pen(800, 800);
    for (int i = 0; i < 60'000; ++i) {
        pen += QPointF(step(random), step(random));
        pen = {qBound(0.0, pen.x(), 1600.0), qBound(0.0, pen.y(), 1600.0)};
        positions.push_back(pen);
        path.add(i * 0.01, pen);
    }
    QVERIFY(path.cellWidth() > 1);
    const double half = path.cellWidth() / 2;
    std::set<std::pair<double, double>> drawn;
    for (const Line &line : path.lines()) {
        for (const QPointF &point : line)
            drawn.emplace(point.x(), point.y());
    }
    for (const QPointF &position : positions) {
        const auto centre = [&](double at) { return std::floor(at / (2 * half)) * 2 * half + half; };
        QVERIFY(drawn.count({centre(position.x()), centre(position.y())}) == 1);
    }
}

void PathTests::positionsBeyondTheRange()
{
    Path path({0, 0, 10, 10}, 10);
    path.add(0, {-1e300, 1e300});
    QCOMPARE(path.lines().size(), std::size_t(1));
}

PADSCOPE_TESTS(PathTests);
#include "tst_path.moc"
