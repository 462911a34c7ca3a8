#include "integermath.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr int steps = 1024; ///< of the tangent from 0 to 1
constexpr int eighthTurn = 1024;
constexpr int quarterTurn = 2 * eighthTurn;
constexpr int halfTurn = 4 * eighthTurn;
constexpr int fullTurn = 8 * eighthTurn;
constexpr double pi = 3.14159265358979323846;

using TangentTable = std::array<std::uint16_t, steps + 3>;

/// Angles whose tangents are i / 1024, and two more entries that are never read.
TangentTable makeTangentTable()
{
    TangentTable table{};
    table.fill(eighthTurn);
    for (int i = 0; i <= steps; ++i) {
        const double angle = std::atan(static_cast<double>(i) / steps) * halfTurn / pi;
        table[static_cast<std::size_t>(i)] = static_cast<std::uint16_t>(std::floor(angle));
    }
    return table;
}

const TangentTable tantab = makeTangentTable();

/// Angle whose tangent is numerator / denominator, at most an eighth of a turn.
int eighthAngle(std::int64_t numerator, std::int64_t denominator)
{
    return tantab[static_cast<std::size_t>(numerator * steps / denominator)];
}

int firstQuadrantAngle(std::int64_t ax, std::int64_t ay)
{
    if (ay > ax)
        return quarterTurn - eighthAngle(ax, ay);
    return ax != 0 ? eighthAngle(ay, ax) : tantab[0];
}

} // namespace

int ArcTan(int x, int y)
{
    const int angle = firstQuadrantAngle(std::llabs(x), std::llabs(y));
    if (y >= 0)
        return x >= 0 ? angle : halfTurn - angle;
    return x <= 0 ? halfTurn + angle : fullTurn - angle;
}

int sqrt32(long v)
{
    // Bit by bit. The first trial bit is never above 2^30, so the result saturates.
    std::uint64_t rest = v < 0 ? 0 - static_cast<std::uint64_t>(v) : static_cast<std::uint64_t>(v);
    std::uint64_t bit = std::uint64_t{1} << 30;
    while (bit > rest)
        bit >>= 2;
    std::uint64_t root = 0;
    for (; bit > 0; bit >>= 2) {
        const std::uint64_t trial = root + bit;
        root >>= 1;
        if (rest >= trial) {
            rest -= trial;
            root += bit;
        }
    }
    return static_cast<int>(root);
}
