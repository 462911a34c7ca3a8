#include "pen.h"

#include <cmath>
#include <numeric>

namespace {

constexpr double turn = 6.283185307179586;

constexpr double lineSeconds = 8; // six seconds of writing, then back to the next line
constexpr double writingSeconds = 6;
constexpr double wordSeconds = 1.5; // of which the pen is down for the first 1.2
constexpr double penDownSeconds = 1.2;
constexpr int linesOnBoard = 6;

constexpr double margin = 1500;
constexpr double lineLength = boardWidth - 2 * margin;
constexpr double lineHeight = (boardHeight - 2 * margin) / linesOnBoard;
constexpr double loopRadius = 450;
constexpr double loopsPerSecond = 0.8;

/// Way along the line, 0 to 1: forth while the pen writes, back while it is lifted.
double wayAlong(double inLine)
{
    if (inLine < writingSeconds)
        return inLine / writingSeconds;
    return 1 - (inLine - writingSeconds) / (lineSeconds - writingSeconds);
}

constexpr double hoverStrength = 0.7;

Pen pathPen(const PenPath &path, double seconds)
{
    const auto add = [](double sum, const PenPath::Point &point) { return sum + point.seconds; };
    double left = std::fmod(seconds, std::accumulate(path.points.begin(), path.points.end(), 0.0, add));
    std::size_t index = 0;
    while (index + 1 < path.points.size() && left >= path.points[index].seconds)
        left -= path.points[index++].seconds;
    const PenPath::Point &from = path.points[index];
    const PenPath::Point &to = path.points[(index + 1) % path.points.size()];
    const double share = left / from.seconds;
    return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share,
            from.touches ? 1 : hoverStrength, from.touches, from.touches ? 1 : 0};
}

/// Lines of looped words with lifts between them, from the top of the board to its bottom and over again.
Pen writingPen(double seconds)
{
    const double inLine = std::fmod(seconds, lineSeconds);
    const int line = static_cast<int>(seconds / lineSeconds) % linesOnBoard;
    const bool writing = inLine < writingSeconds;

    Pen pen;
    pen.touches = writing && std::fmod(inLine, wordSeconds) < penDownSeconds;
    pen.strength = pen.touches ? 1 : writing ? hoverStrength : 0.4;
    pen.buttons = (pen.touches ? 1 : 0) | (line == linesOnBoard - 1 ? 2 : 0);
    const double loop = turn * loopsPerSecond * seconds;
    pen.x = margin + lineLength * wayAlong(inLine) + loopRadius * std::cos(loop);
    pen.y = margin + lineHeight * (line + 0.5) + loopRadius * std::sin(loop);
    return pen;
}

} // namespace

Pen firstPen(const PenPath &path, double seconds)
{
    if (path.away)
        return {};
    return path.points.empty() ? writingPen(seconds) : pathPen(path, seconds);
}

Pen wanderingPen(double seconds)
{
    constexpr double circleSeconds = 20;
    const double way = turn * seconds / circleSeconds;

    Pen pen;
    pen.x = boardWidth / 2.0 + 5000 * std::cos(way);
    pen.y = boardHeight / 2.0 + 4000 * std::sin(way);
    pen.touches = std::fmod(seconds, circleSeconds) < circleSeconds / 2;
    pen.strength = pen.touches ? 1 : 0.5;
    pen.buttons = pen.touches ? 1 : 0;
    return pen;
}
