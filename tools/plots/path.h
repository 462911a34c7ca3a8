#pragma once

#include <cstdint>
#include <optional>
#include <QRectF>
#include <unordered_set>
#include <vector>

#include "columns.h"

namespace plots {

/// The way of a pen on a grid of square cells. Each step from cell to cell is kept once, however often the
/// pen goes it, so every position is drawn to half a cell. While there are too many steps, cells grow to
/// twice their width.
class Path
{
public:
    static constexpr std::size_t maxSteps = 20'000;

    /// \param shown holds all positions
    /// \param cellsAcross in the longer side
    Path(const QRectF &shown, int cellsAcross);

    /// Positions that are more than `maxGapSeconds` apart are not joined.
    void add(double seconds, const QPointF &position);

    std::vector<Line> lines() const;
    double cellWidth() const { return width; }

private:
    struct Cell
    {
        std::uint32_t x, y;

        bool operator==(const Cell &other) const { return x == other.x && y == other.y; }
    };

    struct Step
    {
        Cell from, to;
    };

    Cell cellAt(const QPointF &position) const;
    static std::uint64_t keyOf(const Step &step);
    void addStep(const Step &step);
    void enlargeCells();
    QPointF centreOf(const Cell &cell) const;

    QRectF range;
    double width;
    double lastSeconds = 0;
    std::optional<Cell> last;
    std::vector<Step> steps; ///< in the order in which the pen went them; where it was put down, from a cell
                             ///< to itself
    std::unordered_set<std::uint64_t> known; ///< keys of the steps
};

} // namespace plots
