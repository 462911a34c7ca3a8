#include "boardreader.h"

#include "jsonvalues.h"

namespace {

constexpr std::size_t maxPoints = 100;
constexpr int maxAdc = 1023;

Weights weightsOf(const Json &node)
{
    allowKeys(node, {std::begin(kindNames), std::end(kindNames)});
    Weights weights{};
    int sum = 0;
    for (const auto &[name, weight] : node.items())
        sum += weights[static_cast<std::size_t>(*kindNamed(name))] =
            static_cast<int>(integer(weight, 0, maxWeight));
    if (sum == 0)
        refuse(node, "no kind is left; allowed is an object with at least one number above 0");
    return weights;
}

PenPath::Point pointOf(const Json &node)
{
    allowKeys(node, {"seconds", "x", "y", "touches"});
    PenPath::Point point;
    point.seconds = number(need(node, "seconds"), 0.01, lastSecond);
    point.x = number(need(node, "x"), 0, boardWidth);
    point.y = number(need(node, "y"), 0, boardHeight);
    take(node, "touches", point.touches, boolean);
    return point;
}

PenPath penOf(const Json &node)
{
    PenPath path;
    if (node.is_string()) {
        const std::string name = text(node);
        if (name != "writing" && name != "away")
            refuse(node, "this pen is not known; allowed are writing, away and a list of points");
        path.away = name == "away";
        return path;
    }
    for (const Json &point : items(node, 1, maxPoints))
        path.points.push_back(pointOf(point));
    return path;
}

} // namespace

Scenario::Place readBoard(const Json &node)
{
    allowKeys(node, {"id", "rate", "seed", "plugged", "kinds", "lines", "unknowns", "pen", "adcMax"});
    Scenario::Place place{{readId(need(node, "id")), 0}};
    BoardPlan &plan = place.plan;
    take(node, "rate", plan.rate, [](const Json &rate) { return readAmount(rate, maxRate); });
    take(node, "plugged", place.plugged, boolean);
    take(node, "kinds", plan.weights, weightsOf);
    take(node, "lines", plan.lines, boolean);
    take(node, "unknowns", plan.unknowns, boolean);
    take(node, "pen", plan.pen, penOf);
    take(node, "adcMax", plan.adcMax,
         [](const Json &most) { return static_cast<int>(integer(most, adcMin, maxAdc)); });
    return place;
}
