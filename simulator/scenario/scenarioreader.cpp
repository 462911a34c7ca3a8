#include "scenarioreader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "eventreader.h"
#include "replayplanreader.h"

namespace {

constexpr std::size_t maxFileSize = 1048576;
constexpr std::size_t maxEvents = 1000;
constexpr std::size_t maxPoints = 100;
constexpr int maxAdc = 1023;
constexpr std::uint32_t seedStep = 7919;

[[noreturn]] void rejectFile(const std::string &reason)
{
    throw Invalid{"", "this cannot be read (" + reason + "); a scenario file is needed"};
}

std::string contentsOf(const std::string &path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        rejectFile(error ? error.message() : "it is not a regular file");
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        rejectFile(std::strerror(errno));
    std::string contents(maxFileSize + 1, '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    contents.resize(static_cast<std::size_t>(file.gcount()));
    if (contents.size() > maxFileSize)
        throw Invalid{"", "the file is too large; allowed are up to 1048576 bytes"};
    return contents;
}

Weights weightsOf(const Json &node)
{
    allowKeys(node, {std::begin(kindNames), std::end(kindNames)});
    Weights weights{};
    for (const auto &[name, weight] : node.items())
        weights[static_cast<std::size_t>(*kindNamed(name))] = static_cast<int>(integer(weight, 0, maxWeight));
    if (weights == Weights{})
        reject(node, "no kind is left; allowed is an object with at least one number above 0");
    return weights;
}

PenPath::Point pointOf(const Json &node)
{
    allowKeys(node, {"seconds", "x", "y", "touches"});
    PenPath::Point point;
    point.seconds = number(need(node, "seconds"), 0.01, maxSeconds);
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
            reject(node, "this pen is not known; allowed are writing, away and a list of points");
        path.away = name == "away";
        return path;
    }
    for (const Json &point : items(node, 1, maxPoints))
        path.points.push_back(pointOf(point));
    return path;
}

std::uint32_t seedOf(const Json &node)
{
    return static_cast<std::uint32_t>(integer(node, 0, UINT32_MAX));
}

/// Boards with the same id would otherwise send the same.
std::uint32_t defaultSeed(std::uint32_t common, const std::vector<BoardPlan> &before, int id)
{
    const auto sameId =
        std::count_if(before.begin(), before.end(), [id](const BoardPlan &plan) { return plan.id == id; });
    return common + static_cast<std::uint32_t>(id) + seedStep * static_cast<std::uint32_t>(sameId);
}

void readBoard(const Json &node, std::uint32_t commonSeed, std::vector<BoardPlan> &boards)
{
    allowKeys(node, {"id", "rate", "seed", "plugged", "kinds", "lines", "unknowns", "pen", "adcMax"});
    const int id = boardId(need(node, "id"));
    BoardPlan plan{id, defaultSeed(commonSeed, boards, id)};
    take(node, "rate", plan.rate, [](const Json &rate) { return positive(rate, maxRate); });
    take(node, "plugged", plan.plugged, boolean);
    take(node, "kinds", plan.weights, weightsOf);
    take(node, "lines", plan.lines, boolean);
    take(node, "unknowns", plan.unknowns, boolean);
    take(node, "pen", plan.pen, penOf);
    take(node, "adcMax", plan.adcMax,
         [](const Json &max) { return static_cast<int>(integer(max, adcMin, maxAdc)); });
    take(node, "seed", plan.seed, seedOf);
    boards.push_back(std::move(plan));
}

void readAll(const Json &root, const char *key, void (*read)(const Json &, Scenario &), Scenario &scenario)
{
    if (const Json *list = find(root, key)) {
        for (const Json &node : items(*list, 0, maxEvents))
            read(node, scenario);
    }
}

void checkRates(const Scenario &scenario, const Json &boards)
{
    int total = 0;
    for (const BoardPlan &plan : scenario.boards) {
        int max = plan.rate;
        for (const BoardEvent &event : plan.events) {
            if (const auto *rate = std::get_if<Rate>(&event.what))
                max = std::max(max, rate->perSecond);
        }
        total += max;
    }
    if (total > maxTotalRate)
        reject(boards, "together they would send " + std::to_string(total) +
                           " reports a second; allowed are up to " + std::to_string(maxTotalRate));
}

template <typename Event>
void sortByTime(std::vector<Event> &events)
{
    std::stable_sort(events.begin(), events.end(),
                     [](const Event &a, const Event &b) { return a.at < b.at; });
}

std::string titleOf(const Replay &replay)
{
    return "Replay of " + std::filesystem::path(replay.plan.capture).filename().string();
}

/// A capture is read when all else is right.
Scenario replayIn(const Json &root, const std::string &folder)
{
    allowKeys(root, {"$schema", "title", "replay"});
    Scenario scenario;
    std::string schema;
    take(root, "$schema", schema, text);
    take(root, "title", scenario.title, text);
    scenario.replay = replayOf(need(root, "replay"), folder);
    if (!find(root, "title"))
        scenario.title = titleOf(*scenario.replay);
    return scenario;
}

Scenario scenarioIn(const Json &root, const std::string &folder)
{
    if (root.is_object() && find(root, "replay"))
        return replayIn(root, folder);
    allowKeys(root, {"$schema", "title", "seed", "boards", "timeline", "faults", "replay"});
    Scenario scenario;
    std::string schema;
    std::uint32_t seed = 0;
    take(root, "$schema", schema, text);
    scenario.title = text(need(root, "title"));
    take(root, "seed", seed, seedOf);
    for (const Json &node : items(need(root, "boards"), 0, maxBoards))
        readBoard(node, seed, scenario.boards);
    readAll(root, "timeline", readEvent, scenario);
    readAll(root, "faults", readFault, scenario);
    checkRates(scenario, need(root, "boards"));
    for (BoardPlan &plan : scenario.boards)
        sortByTime(plan.events);
    sortByTime(scenario.events);
    return scenario;
}

/// A capture alone, with the usual values.
Scenario captureIn(const std::string &path)
{
    ReplayPlan plan;
    plan.capture = path;
    Scenario scenario;
    std::string error;
    scenario.replay = readReplay(plan, error);
    if (!scenario.replay)
        throw Invalid{"", error};
    scenario.title = titleOf(*scenario.replay);
    return scenario;
}

} // namespace

std::optional<Scenario> readScenario(const std::string &path, std::string &error)
{
    const std::filesystem::path file(path);
    try {
        return file.extension() == captureExtension
                   ? captureIn(path)
                   : scenarioIn(parseJson(contentsOf(path)), file.parent_path().string());
    } catch (const Invalid &invalid) {
        error = path + ": " + invalid.where + (invalid.where.empty() ? "" : ": ") + invalid.what;
        const auto isControl = [](unsigned char character) { return character < 0x20 || character == 0x7F; };
        std::replace_if(error.begin(), error.end(), isControl, '?');
        return std::nullopt;
    }
}
