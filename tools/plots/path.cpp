#include "path.h"

#include <algorithm>

namespace plots {

namespace {

constexpr std::uint32_t maxIndex = 0xFFFF; ///< of a cell, so that four fit into a key

} // namespace

Path::Path(const QRectF &shown, int cellsAcross)
    : range(shown)
    , width(std::max(shown.width(), shown.height()) / cellsAcross)
{
    if (width <= 0) // a single position
        width = 1;
}

/// The same in either direction.
std::uint64_t Path::keyOf(const Step &step)
{
    const auto pack = [](const Cell &cell) { return std::uint64_t{cell.x} << 16 | cell.y; };
    const std::uint64_t from = pack(step.from);
    const std::uint64_t to = pack(step.to);
    return std::min(from, to) << 32 | std::max(from, to);
}

Path::Cell Path::cellAt(const QPointF &position) const
{
    const auto index = [this](double offset) {
        return static_cast<std::uint32_t>(std::clamp(offset / width, 0.0, double{maxIndex}));
    };
    return {index(position.x() - range.left()), index(position.y() - range.top())};
}

void Path::add(double seconds, const QPointF &position)
{
    const Cell cell = cellAt(position);
    const bool isJoined = last && seconds - lastSeconds <= maxGapSeconds;
    lastSeconds = seconds;
    const Step step{isJoined ? *last : cell, cell};
    last = cell;
    if (!isJoined || !(step.from == step.to))
        addStep(step);
}

void Path::addStep(const Step &step)
{
    if (!known.insert(keyOf(step)).second)
        return;
    steps.push_back(step);
    while (steps.size() > maxSteps)
        enlargeCells();
}

void Path::enlargeCells()
{
    const auto half = [](const Cell &cell) { return Cell{cell.x / 2, cell.y / 2}; };
    width *= 2;
    if (last)
        last = half(*last);
    std::vector<Step> old;
    old.swap(steps);
    known.clear();
    for (const Step &step : old) {
        const Step larger{half(step.from), half(step.to)};
        const bool isWithinCell = larger.from == larger.to && !(step.from == step.to);
        if (!isWithinCell && known.insert(keyOf(larger)).second)
            steps.push_back(larger);
    }
}

QPointF Path::centreOf(const Cell &cell) const
{
    return range.topLeft() + QPointF(cell.x + 0.5, cell.y + 0.5) * width;
}

std::vector<Line> Path::lines() const
{
    std::vector<Line> found;
    std::optional<Cell> end;
    for (const Step &step : steps) {
        const bool isPutDown = step.from == step.to;
        if (isPutDown || !end || !(*end == step.from))
            found.push_back({centreOf(step.from)});
        if (!isPutDown)
            found.back().append(centreOf(step.to));
        end = step.to;
    }
    return found;
}

} // namespace plots
