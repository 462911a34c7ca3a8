#include "scenarioreader.h"

#include "boardreader.h"
#include "eventreader.h"
#include "jsonvalues.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace {

constexpr std::size_t largestFile = 1048576;
constexpr std::size_t mostEvents = 1000;
constexpr std::uint32_t seedStep = 7919;

std::string contentsOf(const std::string &path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::none)
        throw Refusal{"", "this cannot be read (" + error.message() + "); a file that can be read is needed"};
    if (!std::filesystem::exists(status))
        throw Refusal{"", "there is no such file; a scenario file is needed"};
    if (!std::filesystem::is_regular_file(status))
        throw Refusal{"", "this is not a file; a scenario file is needed"};
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string contents(largestFile + 1, '\0');
    if (!file)
        throw Refusal{"", "this cannot be read (" + std::string(std::strerror(errno)) +
                              "); a file that can be read is needed"};
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    contents.resize(static_cast<std::size_t>(file.gcount()));
    if (contents.size() > largestFile)
        throw Refusal{"", "the file is too large; allowed are up to 1048576 bytes"};
    return contents;
}

/// Boards with the same id would otherwise send the same.
std::uint32_t usualSeed(std::uint32_t common, const std::vector<Scenario::Place> &before, int id)
{
    const auto sameId = std::count_if(before.begin(), before.end(),
                                      [id](const Scenario::Place &place) { return place.plan.id == id; });
    return common + static_cast<std::uint32_t>(id) + seedStep * static_cast<std::uint32_t>(sameId);
}

void readBoards(const JsonNode &root, Scenario &scenario)
{
    const auto seed = root.find("seed");
    const std::uint32_t common = seed ? readSeed(*seed) : 0;
    for (const JsonNode &node : root.need("boards").items(0, mostBoards)) {
        Scenario::Place place = readBoard(node);
        const auto own = node.find("seed");
        place.plan.seed = own ? readSeed(*own) : usualSeed(common, scenario.boards, place.plan.id);
        scenario.boards.push_back(std::move(place));
    }
}

void checkRates(const Scenario &scenario, const JsonNode &boards)
{
    int total = 0;
    for (const Scenario::Place &place : scenario.boards) {
        int highest = place.plan.rate;
        for (const BoardEvent &event : place.plan.events) {
            if (event.what == BoardEvent::What::Rate)
                highest = std::max(highest, event.amount);
        }
        total += highest;
    }
    if (total > highestTotalRate)
        boards.refuse("together they would send " + std::to_string(total) +
                      " reports a second; allowed are up to " + std::to_string(highestTotalRate));
}

template <typename Event>
void sortByTime(std::vector<Event> &events)
{
    std::stable_sort(events.begin(), events.end(),
                     [](const Event &a, const Event &b) { return a.at < b.at; });
}

Scenario scenarioIn(const JsonNode &root)
{
    root.allowKeys({"$schema", "title", "seed", "boards", "timeline", "faults"});
    if (const auto schema = root.find("$schema"))
        schema->text();
    Scenario scenario;
    scenario.title = root.need("title").text();
    readBoards(root, scenario);
    if (const auto timeline = root.find("timeline")) {
        for (const JsonNode &node : timeline->items(0, mostEvents))
            readEvent(node, scenario);
    }
    if (const auto faults = root.find("faults")) {
        for (const JsonNode &node : faults->items(0, mostEvents))
            readFault(node, scenario);
    }
    checkRates(scenario, root.need("boards"));
    for (Scenario::Place &place : scenario.boards)
        sortByTime(place.plan.events);
    sortByTime(scenario.events);
    return scenario;
}

std::string oneLine(std::string text)
{
    const auto isControl = [](unsigned char character) { return character < 0x20 || character == 0x7F; };
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return text;
}

} // namespace

std::optional<Scenario> readScenario(const std::string &path, std::string &complaint)
{
    try {
        const nlohmann::json document = parseJson(contentsOf(path));
        return scenarioIn(JsonNode(document, ""));
    } catch (const Refusal &refusal) {
        const std::string where = refusal.where.empty() ? "" : refusal.where + ": ";
        complaint = oneLine(path + ": " + where + refusal.what);
    }
    return std::nullopt;
}
