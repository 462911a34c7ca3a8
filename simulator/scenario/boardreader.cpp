#include "boardreader.h"

#include "jsonvalues.h"
#include "listed.h"

namespace {

constexpr std::size_t maxPoints = 100;
constexpr int maxAdc = 1023;

Weights weightsOf(const Json &node)
{
    if (!node.is_object())
        allowKeys(node, {std::begin(kindNames), std::end(kindNames)});
    Weights weights{};
    int sum = 0;
    for (const auto &[name, weight] : node.items()) {
        const auto kind = kindNamed(name);
        if (!kind)
            refuse(weight, "this kind is not known; allowed are " + listed(kindNames));
        sum += weights[static_cast<std::size_t>(*kind)] = static_cast<int>(integer(weight, 0, maxWeight));
    }
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
    if (const Json *touches = find(node, "touches"))
        point.touches = boolean(*touches);
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
    if (const Json *rate = find(node, "rate"))
        plan.rate = readAmount(*rate, maxRate);
    if (const Json *plugged = find(node, "plugged"))
        place.plugged = boolean(*plugged);
    if (const Json *kinds = find(node, "kinds"))
        plan.weights = weightsOf(*kinds);
    if (const Json *lines = find(node, "lines"))
        plan.lines = boolean(*lines);
    if (const Json *unknowns = find(node, "unknowns"))
        plan.unknowns = boolean(*unknowns);
    if (const Json *pen = find(node, "pen"))
        plan.pen = penOf(*pen);
    if (const Json *adcMax = find(node, "adcMax"))
        plan.adcMax = static_cast<int>(integer(*adcMax, adcMin, maxAdc));
    return place;
}
