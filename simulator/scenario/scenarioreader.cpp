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

constexpr std::size_t maxFileSize = 1048576;
constexpr std::size_t maxEvents = 1000;
constexpr std::uint32_t seedStep = 7919;

[[noreturn]] void refuseFile(const std::string &reason)
{
    throw Refusal{"", "this cannot be read (" + reason + "); a scenario file is needed"};
}

std::string contentsOf(const std::string &path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        refuseFile(error ? error.message() : "it is not a regular file");
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        refuseFile(std::strerror(errno));
    std::string contents(maxFileSize + 1, '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    contents.resize(static_cast<std::size_t>(file.gcount()));
    if (contents.size() > maxFileSize)
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

void readBoards(const Json &root, Scenario &scenario)
{
    std::uint32_t common = 0;
    take(root, "seed", common, readSeed);
    for (const Json &node : items(need(root, "boards"), 0, maxBoards)) {
        Scenario::Place place = readBoard(node);
        place.plan.seed = usualSeed(common, scenario.boards, place.plan.id);
        take(node, "seed", place.plan.seed, readSeed);
        scenario.boards.push_back(std::move(place));
    }
}

void readAll(const Json &root, const char *key, void (*read)(const Json &, Scenario &), Scenario &scenario)
{
    const Json *list = find(root, key);
    if (!list)
        return;
    for (const Json &node : items(*list, 0, maxEvents))
        read(node, scenario);
}

void checkRates(const Scenario &scenario, const Json &boards)
{
    int total = 0;
    for (const Scenario::Place &place : scenario.boards) {
        int highest = place.plan.rate;
        for (const BoardEvent &event : place.plan.events) {
            if (const auto *rate = std::get_if<Rate>(&event.what))
                highest = std::max(highest, rate->perSecond);
        }
        total += highest;
    }
    if (total > maxTotalRate)
        refuse(boards, "together they would send " + std::to_string(total) +
                           " reports a second; allowed are up to " + std::to_string(maxTotalRate));
}

template <typename Event>
void sortByTime(std::vector<Event> &events)
{
    std::stable_sort(events.begin(), events.end(),
                     [](const Event &a, const Event &b) { return a.at < b.at; });
}

Scenario scenarioIn(const Json &root)
{
    allowKeys(root, {"$schema", "title", "seed", "boards", "timeline", "faults"});
    if (const Json *schema = find(root, "$schema"))
        text(*schema);
    Scenario scenario;
    scenario.title = text(need(root, "title"));
    readBoards(root, scenario);
    readAll(root, "timeline", readEvent, scenario);
    readAll(root, "faults", readFault, scenario);
    checkRates(scenario, need(root, "boards"));
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
        return scenarioIn(parseJson(contentsOf(path)));
    } catch (const Refusal &refusal) {
        const std::string where = refusal.where.empty() ? "" : refusal.where + ": ";
        complaint = oneLine(path + ": " + where + refusal.what);
    }
    return std::nullopt;
}
