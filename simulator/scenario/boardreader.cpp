#include "boardreader.h"

#include "jsonvalues.h"

namespace {

constexpr std::size_t mostPoints = 100;
constexpr int highestAdc = 1023;

Weights weightsOf(const JsonNode &node)
{
    Weights weights{};
    int sum = 0;
    for (const auto &[name, member] : node.members()) {
        const auto kind = kindNamed(name);
        if (!kind)
            member.refuse("this kind is not known; allowed are " +
                          listed({std::begin(kindNames), std::end(kindNames)}));
        sum += weights[static_cast<std::size_t>(*kind)] = static_cast<int>(member.integer(0, greatestWeight));
    }
    if (sum == 0)
        node.refuse("no kind is left; allowed is an object with at least one number above 0");
    return weights;
}

PenPath::Point pointOf(const JsonNode &node)
{
    node.allowKeys({"seconds", "x", "y", "touches"});
    PenPath::Point point;
    point.seconds = node.need("seconds").number(0.01, lastSecond);
    point.x = node.need("x").number(0, boardWidth);
    point.y = node.need("y").number(0, boardHeight);
    if (const auto touches = node.find("touches"))
        point.touches = touches->boolean();
    return point;
}

PenPath penOf(const JsonNode &node)
{
    PenPath path;
    if (node.isText()) {
        const std::string name = node.text();
        if (name != "writing" && name != "away")
            node.refuse("this pen is not known; allowed are writing, away and a list of points");
        path.away = name == "away";
        return path;
    }
    for (const JsonNode &item : node.items(1, mostPoints))
        path.points.push_back(pointOf(item));
    return path;
}

} // namespace

Scenario::Place readBoard(const JsonNode &node)
{
    node.allowKeys({"id", "rate", "seed", "plugged", "kinds", "lines", "unknowns", "pen", "adcMax"});
    Scenario::Place place{{readId(node.need("id")), 0}};
    BoardPlan &plan = place.plan;
    if (const auto rate = node.find("rate"))
        plan.rate = readAmount(*rate, highestRate);
    if (const auto plugged = node.find("plugged"))
        place.plugged = plugged->boolean();
    if (const auto kinds = node.find("kinds"))
        plan.weights = weightsOf(*kinds);
    if (const auto lines = node.find("lines"))
        plan.lines = lines->boolean();
    if (const auto unknowns = node.find("unknowns"))
        plan.unknowns = unknowns->boolean();
    if (const auto pen = node.find("pen"))
        plan.pen = penOf(*pen);
    if (const auto adcMax = node.find("adcMax"))
        plan.adcMax = static_cast<int>(adcMax->integer(adcMin, highestAdc));
    return place;
}
