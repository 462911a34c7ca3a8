#include "eventreader.h"

#include "faults.h"
#include "jsonvalues.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int largestBurst = 100000;
constexpr double longestFault = 60;

int knownBoard(const JsonNode &node, const Scenario &scenario)
{
    const int id = readId(node);
    std::vector<std::string> known;
    for (const Scenario::Place &place : scenario.boards) {
        if (place.plan.id == id)
            return id;
        known.push_back(std::to_string(place.plan.id));
    }
    node.refuse("there is no board " + std::to_string(id) + "; allowed are " +
                (known.empty() ? "none" : listed(known)));
}

void addToBoards(Scenario &scenario, int id, const BoardEvent &event)
{
    for (Scenario::Place &place : scenario.boards) {
        if (place.plan.id == id)
            place.plan.events.push_back(event);
    }
}

BoardEvent burst(const JsonNode &amount)
{
    return {{}, BoardEvent::What::Burst, readAmount(amount, largestBurst)};
}

BoardEvent rate(const JsonNode &amount)
{
    return {{}, BoardEvent::What::Rate, readAmount(amount, highestRate)};
}

BoardEvent pause(const JsonNode &amount)
{
    return {{}, BoardEvent::What::Pause, 0, readSeconds(amount, 0)};
}

BoardEvent text(const JsonNode &amount)
{
    const Report characters = readLatin1(amount);
    const std::string_view bytes(reinterpret_cast<const char *>(characters.data()), characters.size());
    return {{}, BoardEvent::What::Raw, 0, {}, {}, textReport(reports::TextReport, bytes)};
}

BoardEvent raw(const JsonNode &amount)
{
    return {{}, BoardEvent::What::Raw, 0, {}, {}, readHex(amount)};
}

/// What may happen to a board: its name, the key of its amount, and how that is read.
struct Rule
{
    const char *name;
    const char *amount;
    BoardEvent (*read)(const JsonNode &amount);
};
constexpr Rule rules[] = {
    {"burst", "reports", burst}, {"rate", "rate", rate}, {"pause", "seconds", pause},
    {"text", "text", text},      {"raw", "hex", raw},
};

const Rule &ruleNamed(const JsonNode &name)
{
    const std::string wanted = name.text();
    for (const Rule &rule : rules) {
        if (rule.name == wanted)
            return rule;
    }
    name.refuse("this is not known; allowed are plug, unplug, burst, rate, pause, text, raw");
}

const Fault &faultIn(const JsonNode &name)
{
    if (const Fault *known = faultNamed(name.text()))
        return *known;
    std::vector<std::string> names;
    for (const Fault &fault : faults)
        names.emplace_back(fault.name);
    name.refuse("this fault is not known; allowed are " + listed(names));
}

/// The fault with the amounts that are given; each fault has keys of its own.
Fault faultWithAmounts(const JsonNode &node, const Fault &usual)
{
    Fault fault = usual;
    const auto given = [&](const char *key, bool has) {
        auto found = node.find(key);
        if (found && !has)
            found->refuse("the fault " + std::string(usual.name) + " has no \"" + key +
                          "\"; allowed is none");
        return found;
    };
    given("board", usual.scope == Fault::Scope::FirstBoard);
    if (const auto reports = given("reports", usual.reports > 0))
        fault.reports = readAmount(*reports, largestBurst);
    if (const auto seconds = given("seconds", usual.seconds > 0))
        fault.seconds = seconds->number(usual.scope == Fault::Scope::Library ? 0.001 : 0, longestFault);
    if (const auto index = given("index", usual.name == "enumeration-fails"))
        fault.index = static_cast<int>(index->integer(0, mostBoards - 1));
    if (const auto by = given("by", usual.by != 0))
        fault.by = static_cast<int>(by->integer(-64, 64));
    return fault;
}

} // namespace

void readEvent(const JsonNode &node, Scenario &scenario)
{
    const JsonNode name = node.need("do");
    const bool plug = name.text() == "plug";
    if (plug || name.text() == "unplug") {
        node.allowKeys({"at", "do", "board"});
        scenario.events.push_back({readSeconds(node.need("at"), 0),
                                   plug ? LibraryEvent::What::Plug : LibraryEvent::What::Unplug,
                                   knownBoard(node.need("board"), scenario)});
        return;
    }
    const Rule &rule = ruleNamed(name);
    node.allowKeys({"at", "do", "board", rule.amount});
    const int board = knownBoard(node.need("board"), scenario);
    BoardEvent event = rule.read(node.need(rule.amount));
    event.at = readSeconds(node.need("at"), 0);
    addToBoards(scenario, board, event);
}

void readFault(const JsonNode &node, Scenario &scenario)
{
    const Fault &usual = faultIn(node.need("fault"));
    node.allowKeys({"at", "fault", "board", "reports", "seconds", "index", "by"});
    const Fault fault = faultWithAmounts(node, usual);
    const auto given = node.find("at");
    const auto at = given ? readSeconds(*given, 0) : std::chrono::nanoseconds(0);
    if (fault.scope == Fault::Scope::Library) {
        const auto events = libraryEvents(fault, at);
        scenario.events.insert(scenario.events.end(), events.begin(), events.end());
        return;
    }
    if (scenario.boards.empty())
        node.refuse("the fault " + std::string(fault.name) + " needs a board; there is none");
    const auto board = node.find("board");
    const int id = board ? knownBoard(*board, scenario) : scenario.boards.front().plan.id;
    for (const BoardEvent &event : boardEvents(fault, at, static_cast<int>(scenario.boards.size()))) {
        for (Scenario::Place &place : scenario.boards) {
            if (fault.scope == Fault::Scope::EveryBoard || place.plan.id == id)
                place.plan.events.push_back(event);
        }
    }
}
